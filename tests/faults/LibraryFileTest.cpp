// The library's file is locked, write-protected, deleted, replaced or spoilt under an open window. Whatever the user
// does is answered in time, no edit goes where nobody finds it, and the window keeps what it shows.

#include <unistd.h>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/shell/modMain.h"
#include "tests/faults/Workplace.h"

namespace {

/// Write-protected files and folders, and a user who has to respect that, for as long as it lives: permissions do not
/// hold for the superuser.
class WriteProtected {
public:
    explicit WriteProtected(const QStringList& paths) : m_paths(paths) {
        allow(0x5555, 0x4444);
        constexpr uid_t nobody = 65534;
        EXPECT_TRUE(geteuid() != 0 || seteuid(nobody) == 0);
    }
    ~WriteProtected() {
        EXPECT_EQ(seteuid(getuid()), 0);
        allow(0x7777, 0x6666);
    }
    Q_DISABLE_COPY(WriteProtected)

private:
    void allow(int inFolders, int inFiles) {
        for (const QString& path : m_paths)
            EXPECT_TRUE(
                QFile::setPermissions(path, QFileDevice::Permissions(QFileInfo(path).isDir() ? inFolders : inFiles)));
    }

    const QStringList m_paths;
};

class LibraryFile : public Workplace {
protected:
    LibraryFile() {
        // Without those that need something done or listed first, or leave something in the window.
        for (const Command& command : commands())
            if (command.left == Command::Nothing && !command.before && QLatin1String(command.chapter) == u"010101")
                writing.push_back(command.act);
    }

    /// Everything that writes is tried: each try is refused with one of the errors `numbers`.
    void expectThatNothingIsWritten(const char* numbers) {
        const QByteArray before = bytesOf(path);
        const std::string shownBefore = shown();
        for (const Act& act : writing) {
            const QStringList said = messagesOf(act);
            EXPECT_TRUE(tellsError(said, numbers))
                << "try " << &act - writing.data() << ": " << qPrintable(said.join(u'\n'));
        }
        EXPECT_EQ(shown(), shownBefore);
        EXPECT_EQ(bytesOf(path), before);
        EXPECT_FALSE(QFile::exists(path + u"-journal"_s));
    }

    std::vector<Act> writing;
};

}  // namespace

TEST_F(LibraryFile, LockedIsWaitedForTwoSecondsAndSaid) {
    using enum Disturbance::Kind;
    const QString second = copyOfSampleLibrary(u"second.bdb"_s);
    for (const Act& act : {Act([this] { user.edit(user.bills(), 0, u"Name"_s, u"x"_s); }),
                           {[&] { main.LoadBillDB(second); }},
                           {[this] { click("010102"); }}}) {
        const QStringList said = messagesOf([&] {
            const Disturbance other(path, Locked), another(second, Locked);
            act();
            EditorDriver::settle();
        });
        EXPECT_TRUE(tellsError(said, "5")) << qPrintable(said.join(u'\n'));
        EXPECT_EQ(longestWait, 2000) << "a short lock is waited for";
        EXPECT_EQ(main.editors().size(), 1);
    }
    EXPECT_FALSE(user.bills()->hasRows());
    EXPECT_EQ(messagesOf([this] { user.run(2, 200); }), QStringList());
    EXPECT_EQ(user.bills()->rowCount(), 2) << "nothing is added before the bills have been listed";
    expectThatWorkGoesOn();
    expectWindowIsFile();
    // Closing asks nothing of the file.
    disk.relieve();
    const Disturbance other(path, Locked);
    EXPECT_EQ(messagesOf([this] { user.close(); }), QStringList());
    EXPECT_EQ(disk.counts().waited, 0);
}

TEST_F(LibraryFile, ChangedUnderTheWindowIsNotWrittenTo) {
    const struct {
        const char* name;
        Act change;
        const char* numbers;
    } states[] = {
        {"deleted", [this] { ASSERT_TRUE(QFile::remove(path)); }, "8"},
        {"replaced", [this] { ASSERT_TRUE(QFile::remove(path) && QFile::rename(copyOfSampleLibrary(), path)); }, "8"},
        {"cut short", [this] { ASSERT_TRUE(QFile::resize(path, QFile(path).size() / 2)); }, "11"},
        {"cut to nothing", [this] { overwrite(path, {}); }, "1|11"},
        {"foreign", [this] { overwrite(path, QByteArray(20'000, 'x')); }, "11|26"},
    };
    for (const auto& state : states) {
        SCOPED_TRACE(state.name);
        state.change();
        expectThatNothingIsWritten(state.numbers);
        // Closing has nothing left to write.
        EXPECT_EQ(messagesOf([this] { user.close(); }), QStringList());
        awkwardLibrary();
        reopen();
        expectThatWorkGoesOn();
    }
    // Moved away and back it is the same library.
    {
        const KeptFile moved(path);
        ModalAnswers answers;
        answers.closeAnything();
        user.edit(user.bills(), 0, u"Name"_s, u"x"_s);
        EXPECT_TRUE(answers.seen().value(0).contains(u"文件已被删除、移动或替换"_s));
    }
    expectThatWorkGoesOn();
    expectWindowIsFile();
    // Overwritten in its place it shows the other library from the next click on.
    overwrite(path, bytesOf(copyOfSampleLibrary()));
    EXPECT_EQ(messagesOf([this] { click("010101"); }), QStringList());
    expectThatWorkGoesOn();
    EXPECT_EQ(integrityOf(path), u"ok"_s);
    reopen();
    expectWindowIsFile();
}

TEST_F(LibraryFile, WriteProtectedOrInAWriteProtectedFolderIsShownAndKeptAsItIs) {
    // In such a folder no journal can stand beside the library.
    for (const auto& [protectedPath, numbers] : {std::pair(path, "8"), std::pair(dataPath, "8|14")}) {
        {
            const WriteProtected protection({programFolder(), protectedPath});
            EXPECT_EQ(messagesOf([this] { reopen(); }), QStringList());
            EXPECT_GT(user.bills()->rowCount(), 2);
            expectThatNothingIsWritten(numbers);
            expectWindowIsFile();
            EXPECT_EQ(messagesOf([this] { user.close(); }), QStringList());
        }
        reopen();
        expectThatWorkGoesOn();
    }
}

TEST_F(LibraryFile, CanBeWorkedWithWhenTheProgramFolderIsWriteProtected) {
    QFile::remove(appPath + u"Error.log"_s);
    copyOfSampleLibrary(u"old.bdb"_s);
    const QTemporaryDir elsewhere;
    const QString library = joinPath(elsewhere.path(), u"library.bdb"_s);
    ASSERT_TRUE(QFile::copy(path, library));
    for (const QString& open : {elsewhere.path(), library})
        ASSERT_TRUE(QFile::setPermissions(open, QFileDevice::Permissions(0x7777)));
    QStringList everything{programFolder()};
    QDirIterator entries(programFolder(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext())
        everything << entries.next();
    const WriteProtected protection(everything);
    EXPECT_EQ(messagesOf([&] {
                  SetBasePrm();
                  main.LoadBillDB(library);
                  click("010101");
              }),
              QStringList());
    EXPECT_EQ(rename(u"x"_s) + typeCode(u"a1-3"_s), QStringList());
    EXPECT_EQ(user.contents()->text(2, u"cont"_s).left(6), u"[A1-3]"_s);
    // An error is shown although it cannot be put down; a new library has no place, and cannot take another's.
    EXPECT_EQ(rename(u"x'"_s), QStringList{u"ModDBOperator.ExecuteDDL 1"_s});
    const QString failed = u"提示: 创建文件失败！"_s;
    EXPECT_EQ(enter(256, "txtFileName", u"新库"_s), QStringList({u"ModDBOperator.GetOrmConn 14"_s, failed}));
    EXPECT_EQ(enter(256, "txtFileName", u"old"_s),
              QStringList({u"提示: 存在相同的文件名，是否覆盖原来的文件？"_s, failed}));
    main.commandBars()->execute(260);
    EditorDriver::settle();
}

TEST_F(LibraryFile, ACopyLaidOverItIsNotGivenUpToTheJournalOfTheFileBefore) {
    user.close();
    const QString journal = path + u"-journal"_s;
    const QByteArray copy = bytesOf(path);
    const QStringList copied = contentOf(path);
    for (const char* name : {"1", "2"})
        OtherProgram(path).run("UPDATE tblBill SET Name=?", {QString::fromLatin1(name)});
    auto dying = std::make_unique<OtherProgram>(path);
    // With so little memory it has written half of its change when it dies.
    dying->tryScript("PRAGMA cache_size=1;BEGIN;CREATE TABLE a(b);UPDATE tblBill SET Rule=hex(zeroblob(20000))");
    const QByteArray left = bytesOf(journal);
    dying.reset();
    for (const auto pressed : {QMessageBox::No, QMessageBox::Yes}) {
        overwrite(path, copy);
        overwrite(journal, left);
        ModalAnswers answers;
        answers.press(pressed).closeAnything();
        main.LoadBillDB(path);
        EditorDriver::settle();
        EXPECT_TRUE(answers.seen().value(0).contains(u"不是这个文件留下的"_s));
        const bool opened = user.editor();
        EXPECT_EQ(opened, pressed == QMessageBox::Yes);
        EXPECT_EQ(QFile::remove(journal), !opened);
        EXPECT_EQ(contentOf(path), copied);
    }
    const QStringList aside = QDir(dataPath).entryList({QFileInfo(journal).fileName() + u".*"_s});
    EXPECT_EQ(bytesOf(dataPath + aside.value(0)), left);
}
