// Nothing can be written: the program folder, the library, its folder. What can be read is shown, every edit is refused
// with a message, and no file changes. Permissions do not hold for the superuser, so these tests act as somebody else.

#include <sys/stat.h>
#include <unistd.h>

#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/shell/modMain.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/Typing.h"

namespace {

/// Write-protected files and folders, and a user who has to respect that, for as long as it lives.
class WriteProtected {
public:
    explicit WriteProtected(const QStringList& paths) {
        for (const QString& path : paths) {
            struct stat before {};
            EXPECT_EQ(stat(path.toUtf8(), &before), 0);
            m_before.append({path, before.st_mode & 07777});
            change(path, S_ISDIR(before.st_mode) ? 0555 : 0444);
        }
        if (geteuid() == 0) {
            constexpr uid_t nobody = 65534;
            EXPECT_EQ(seteuid(nobody), 0);
        }
    }
    ~WriteProtected() {
        EXPECT_EQ(seteuid(getuid()), 0);
        for (const auto& [path, mode] : m_before)
            change(path, mode);
    }
    WriteProtected(const WriteProtected&) = delete;
    WriteProtected& operator=(const WriteProtected&) = delete;

private:
    static void change(const QString& path, mode_t mode) { EXPECT_EQ(chmod(path.toUtf8(), mode), 0); }

    QList<std::pair<QString, mode_t>> m_before;
};

QStringList everythingIn(const QString& folder) {
    QStringList all{folder};
    QDirIterator entries(folder, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext())
        all << entries.next();
    return all;
}

class ReadOnly : public Workplace {
protected:
    ReadOnly() : Workplace(awkwardLibrary()) {}

    /// Edits and commands are refused, what can be read is shown.
    void expectThatNothingIsWritten() {
        const QStringList before = contentOf(user.path());
        reopen();
        EXPECT_EQ(messagesOf([this] { click("010101"); }), QStringList());
        EXPECT_GT(user.bills()->rowCount(), 2);
        const auto edit = [this] { user.edit(user.bills(), 0, QStringLiteral("Name"), QStringLiteral("x")); };
        EXPECT_TRUE(messagesOf(edit).value(0).startsWith(QLatin1String("ModDBOperator.ExecuteDDL")));
        for (const int command : {200, 105, 400})
            EXPECT_FALSE(messagesOf([&] { user.run(2, command); }).isEmpty()) << command;
        EXPECT_FALSE(messagesOf([&](ModalAnswers& answers) {
                         answers.press(QMessageBox::Yes);
                         user.run(2, 201);
                     }).isEmpty());
        EXPECT_FALSE(messagesOf([&] { user.run(1, 105); }).isEmpty());
        expectWindowIsFile();
        EXPECT_EQ(contentOf(user.path()), before);
        EXPECT_EQ(messagesOf([this] { user.close(); }), QStringList());
        user.open();
    }

    void expectThatItIsWritable() {
        reopen();
        click("010101");
        expectThatWorkGoesOn();
    }
};

}  // namespace

TEST_F(ReadOnly, ALibraryIsShownAndKeptAsItIs) {
    {
        const WriteProtected protection({programFolder(), user.path()});
        expectThatNothingIsWritten();
    }
    expectThatItIsWritable();
}

TEST_F(ReadOnly, AFolderKeepsItsLibraryAsItIs) {
    // No journal can stand beside it, so nothing can be written to the library either.
    {
        const WriteProtected protection({programFolder(), dataPath});
        expectThatNothingIsWritten();
    }
    expectThatItIsWritable();
}

TEST_F(ReadOnly, AProgramFolderOnlyShowsItsErrors) {
    const QString log = appPath + QStringLiteral("Error.log");
    QFile::remove(log);
    const QTemporaryDir elsewhere;
    const QString library = joinPath(elsewhere.path(), QStringLiteral("library.bdb"));
    ASSERT_TRUE(QFile::copy(user.path(), library));
    ASSERT_EQ(chmod(elsewhere.path().toUtf8(), 0777), 0);
    ASSERT_EQ(chmod(library.toUtf8(), 0666), 0);
    const QStringList before = everythingIn(programFolder());
    {
        const WriteProtected protection(before);
        // Nothing at start; a library elsewhere can be worked with, with ration libraries that can only be read.
        EXPECT_EQ(messagesOf([] { SetBasePrm(); }), QStringList());
        EXPECT_EQ(messagesOf([&] { user.window()->LoadBillDB(library); }), QStringList());
        EXPECT_EQ(messagesOf([this] { click("010101"); }), QStringList());
        EXPECT_EQ(messagesOf([this] { user.edit(user.bills(), 0, QStringLiteral("Name"), QStringLiteral("x")); }),
                  QStringList());
        EXPECT_EQ(messagesOf([this] {
                      QWidget* editor = user.openEditor(user.contents(), 2, QStringLiteral("cont"));
                      EditorDriver::typeOver(editor, QStringLiteral("a1-3"));
                      user.key(editor, Qt::Key_Return);
                  }),
                  QStringList());
        EXPECT_EQ(user.contents()->text(2, QStringLiteral("cont")).left(6), QStringLiteral("[A1-3]"));
        // An error is shown although it cannot be put down; a new library has no place.
        EXPECT_EQ(messagesOf([this] { user.edit(user.bills(), 0, QStringLiteral("Name"), QStringLiteral("x'")); }),
                  QStringList{QStringLiteral("ModDBOperator.ExecuteDDL 1")});
        const QStringList said = messagesOf([this](ModalAnswers& answers) {
            answers.then([](QWidget* dialog) {
                auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtFileName"));
                typeText(box, QStringLiteral("新库"));
                QTest::keyClick(box, Qt::Key_Return);
            });
            user.window()->commandBars()->execute(256);
        });
        EXPECT_EQ(said.mid(1),
                  (QStringList{QStringLiteral("ModDBOperator.GetOrmConn 14"), QStringLiteral("提示: 创建文件失败！")}));
        user.window()->commandBars()->execute(260);
        EditorDriver::settle();
    }
    EXPECT_EQ(everythingIn(programFolder()), before);
    EXPECT_FALSE(QFile::exists(log));
    expectThatItIsWritable();
}
