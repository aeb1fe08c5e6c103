// Bad files of every kind, opened in the real main window and worked with by the random user. Whatever a file holds,
// the window says what it cannot read, changes nothing by looking, and closes; the good library that is open beside it
// works on and is unharmed. A window that never answers is ended with its test by CTest; the last line names the file.

#include <sqlite3.h>

#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"
#include "tests/damage/DamageKinds.h"
#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"
#include "tests/walk/RandomUser.h"

namespace {

/// Whether SQLite itself cannot read all of it, as the program does: views are not read, and what has no end fails.
bool isUnreadable(const QString& path, const QString& query) {
    sqlite3* database = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, 64 << 20);
    int calls = 0;
    sqlite3_progress_handler(
        database, 1000, [](void* number) { return ++*static_cast<int*>(number) > 100'000 ? 1 : 0; }, &calls);
    const int code = sqlite3_exec(database, query.toUtf8().constData(), nullptr, nullptr, nullptr);
    sqlite3_close(database);
    return code != SQLITE_OK;
}

class Damage : public ::testing::Test {
protected:
    struct File {
        const char* name;
        QString path;
        QByteArray key;
        QByteArray good = bytesOf(path);
    };

    /// All files are good again.
    void restore() const {
        for (const File& file : files) {
            QDir(file.path).removeRecursively();
            for (const char* side : {"-journal", "-wal", "-shm"})
                QFile::remove(file.path + QLatin1String(side));
            overwrite(file.path, file.good);
        }
    }

    std::string besideShows() const {
        good.click(good.tree()->node(u"K020101"_s));
        EditorDriver::settle();
        return textOf(snapshotOf(*main->activeEditor()));
    }

    bool isBadOpen() const { return main->activeEditor() && main->activeEditor()->DBFilePath() == library; }

    /// Does `act`, after which somebody must have said so if a query for what is shown then cannot be read.
    void look(const std::function<void()>& act, const QString& query) {
        ModalAnswers answers;
        answers.closeAnything();
        act();
        EditorDriver::settle();
        const bool told = !answers.seen().isEmpty();
        if (isUnreadable(library, query)) {
            ++unreadable;
            EXPECT_TRUE(told) << "nobody said that it cannot be read: " << qPrintable(query);
        }
        EXPECT_TRUE(told || isBadOpen());
    }

    void visit(unsigned seed) {
        const bool changesAtOnce = QFile::exists(library + u"-journal"_s) || QFile::exists(library + u"-wal"_s) ||
                                   bytesOf(library).mid(18, 2).contains('\2');
        const QByteArray before = bytesOf(library);
        look([&] { main->LoadBillDB(library); },
             u"SELECT * FROM tblSYB WHERE IFNULL(Code,'')<>'' ORDER BY length(code),code"_s);
        if (!isBadOpen())
            return;
        ++windows;
        if (KeyedTree::Node* chapter = bad.tree()->node(u"K010101"_s))
            look([&] { bad.click(chapter); }, u"SELECT * FROM tblBill WHERE code LIKE '010101___' ORDER BY code"_s);
        if (bad.bills()->rowCount() > 1)
            look([&] { bad.click(bad.bills(), 1, u"Code"_s); },
                 u"SELECT * FROM tblBillSpec WHERE billID='%1'"_s.arg(bad.bills()->text(1, u"id"_s)));
        EXPECT_TRUE(changesAtOnce || bytesOf(library) == before) << "it was only looked at";
        RandomUser user(bad, seed, {.disturbed = false, .reopens = false});
        for (int step = 0; step < 4; ++step)
            user.step();
        ModalAnswers answers;
        answers.closeAnything();
        if (isBadOpen())
            bad.close();
        EXPECT_FALSE(isBadOpen());
    }

    void expectBesideIsGood(unsigned seed) {
        const ModalAnswers noMessages;
        good.activate();
        ASSERT_EQ(main->activeEditor()->DBFilePath(), beside);
        EXPECT_EQ(besideShows(), expected);
        const QString unit = QString::number(seed);
        EXPECT_TRUE(good.edit(good.bills(), 0, u"Unit"_s, unit));
        EditorDriver::settle();
        EXPECT_EQ(rowsInFile(beside, "SELECT Unit FROM tblBill WHERE Code='020101001'"), QStringList{unit});
        expected = besideShows();
    }

    const QString library = awkwardLibrary();
    const QString beside = libraryAtTheLimits();
    const QString companion = [this] {
        OtherProgram(companionPath(library), systemKey).run("CREATE TABLE IF NOT EXISTS SysBaseData(DekId, DekName)");
        return companionPath(library);
    }();
    const File files[4] = {{"library", library, {}},
                           {"companion", companion, systemKey},
                           {"system database", appPath + u"tessel.dat"_s, systemKey},
                           {"ration library", dataPath + u"广东省/广东建筑与装饰工程定额.db"_s, {}}};
    EditorDriver good{beside};
    frmMain* const main = good.window();
    EditorDriver bad{main, library};
    std::string expected = besideShows();
    int windows = 0, unreadable = 0;
};

}  // namespace

TEST_F(Damage, NeverHarmsTheWindow) {
    const std::vector<DamageKind>& kinds = damageKinds();
    std::map<std::string, int> done;
    int all = 0;
    repeated(static_cast<unsigned>(4 * kinds.size()), [&](unsigned seed) {
        const DamageKind& kind = kinds[seed % kinds.size()];
        const File& file = files[seed / kinds.size() % std::size(files)];
        std::printf("%s, %s, seed %u\n", file.name, kind.name, seed);
        restore();
        Victim victim{file.path, file.key, std::mt19937(seed)};
        if (!kind.apply(victim))
            return;
        ++done[kind.name];
        ++all;
        visit(seed);
        restore();
        expectBesideIsGood(seed);
    });
    EXPECT_EQ(rowsInFile(beside, "PRAGMA integrity_check"), QStringList{u"ok"_s});
    counted(u"damaged files"_s, all);
    counted(u"damaged files that opened a window"_s, windows);
    counted(u"damaged files that could not be read whole, and that was said"_s, unreadable);
    // A run of other seeds may be too short for every kind.
    if (qEnvironmentVariableIsSet("TESSEL_TEST_SEED"))
        return;
    for (const DamageKind& kind : kinds)
        EXPECT_GE(done[kind.name], 1) << kind.name;
    EXPECT_GE(all, static_cast<int>(3 * kinds.size()));
    EXPECT_GE(unreadable, 8);
}
