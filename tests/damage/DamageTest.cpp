// Bad files of every kind, opened in the real main window and clicked through. Whatever a file holds, the window
// answers, says what it cannot read, and closes; the good library that is open beside it works on and is unharmed.
//
// TESSEL_TEST_SEED sets another first file, so that one that failed can be looked at alone.

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <atomic>
#include <chrono>
#include <map>
#include <thread>

#include "app/base/Definitions.h"
#include "app/base/Guarded.h"
#include "samples/writer/RationFiles.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"
#include "tests/damage/DamageKinds.h"
#include "tests/damage/Visitor.h"
#include "tests/support/Libraries.h"
#include "tests/support/Snapshot.h"
#include "tests/support/Extent.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

const QString systemPassword = QLatin1String(systemKey);
const QString regionFolder = u"广东省/"_s;

/// Ends the process when one event never does, and tells which file that was.
class Watchdog {
public:
    Watchdog() : m_thread([this] { watch(); }) {}
    ~Watchdog() {
        m_over = true;
        m_thread.join();
    }
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    void watchFile(const std::string& name) {
        m_name = name;
        ++m_file;
    }

private:
    void watch() {
        for (int file = 0, ticks = 0; !m_over; ++ticks) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            if (std::exchange(file, m_file.load()) != m_file)
                ticks = 0;
            if (ticks > 3000) {
                std::fprintf(stderr, "hangs: %s\n", m_name.c_str());
                std::abort();
            }
        }
    }

    std::string m_name;
    std::atomic<int> m_file = 0;
    std::atomic<bool> m_over = false;
    std::thread m_thread;
};

void copyTo(const QString& path, const QByteArray& bytes) { BadFile(path, {}, 0).write(bytes); }

/// The bytes of the database that `make` fills, on small pages so that its trees have several levels.
QByteArray made(const QString& path, const QString& password, const std::function<void(Connection&)>& make) {
    {
        Connection database;
        database.Open(path, password, Connection::readWriteCreate);
        if (password.isEmpty())
            database.OpenRecordset("PRAGMA page_size=1024");
        make(database);
        if (password.isEmpty())
            database.Execute("VACUUM");
    }
    const QByteArray bytes = BadFile(path, password, 0).bytes();
    QFile::remove(path);
    return bytes;
}

class Damage : public ::testing::Test {
protected:
    struct Victim {
        const char* name;
        QString path;
        QString password;
        QByteArray good;
    };

    Damage() {
        installSamples();
        const QString library = dataPath + u"damaged.bdb"_s;
        const QString system = appPath + u"tessel.dat"_s;
        QFile::remove(system);
        const QString grown = awkwardLibrary();
        victims = {
            {"library", library, {}, made(grown, {}, [](Connection&) {})},
            {"companion", companionPath(library), systemPassword,
             made(companionPath(library), systemPassword, makeTables)},
            {"system database", system, systemPassword, made(system, systemPassword, makeTables)},
            {"ration library", dataPath + regionFolder + u"rations.db"_s, {}, made(library, {}, makeRations)},
        };
        copyTo(beside, victims[0].good);
        main.MDIForm_Load();
        main.resize(1366, 768);
        main.show();
        restore();
        main.LoadBillDB(beside);
        good.settle();
        good.pragma("PRAGMA synchronous=OFF");
        expected = besideShows();
    }

    static void makeTables(Connection& file) {
        createSystemTable(file);
        file.Execute(
            "INSERT INTO SysBaseData(DekId,DekName,DekFilename,rgnName,Prof,QdkFileName) "
            "VALUES('GD2018ZHDE01','定额','rations.db','广东省','01','damaged.bdb'),"
            "('AWKWARD','特殊定额','rations.db','广东省','99','x.bdb'),('GONE','丢失的定额','gone.db','广东省','99',''"
            ")");
    }

    static void makeRations(Connection& file) {
        createRationTables(file);
        file.Execute(
            "INSERT INTO DeSYB WITH RECURSIVE r(n) AS (SELECT 0 UNION ALL SELECT n+1 FROM r WHERE n<47) SELECT "
            "n+1,n/16+1,(n%16>0)*(n/4%4+1),(n%4>0)*(n%4),0,0,'章'||n,0 FROM r");
        file.Execute(
            "INSERT INTO DEB(sybID,DEH,MC,DW) SELECT s.sybID,'A'||s.sybID||'-'||t.sybID,'定额名称'||t.sybID,'100m2' "
            "FROM "
            "DeSYB s,DeSYB t WHERE t.sybID<10");
    }

    /// All files are good again; only a damaged companion is there at all.
    void restore() const {
        for (const Victim& victim : victims) {
            QDir(victim.path).removeRecursively();
            for (const char* side : {"", "-journal", "-wal", "-shm"})
                QFile::remove(victim.path + QLatin1String(side));
            if (&victim != &victims[1])
                copyTo(victim.path, victim.good);
        }
    }

    std::string besideShows() const {
        good.click(good.tree()->node(u"K010101"_s));
        EditorDriver::settle();
        return textOf(rowsOf(good.bills())) + textOf(rowsOf(good.contents())) + textOf(rowsOf(good.features()));
    }

    bool isBadOpen() const { return main.activeEditor() && main.activeEditor()->DBFilePath() == victims[0].path; }

    /// A user opens the library that is damaged, or reads damaged files, and goes through everything.
    void visit(unsigned seed, const Victim& victim, int edits) {
        Visitor visitor(bad, seed);
        ModalAnswers answers;
        answers.otherwise([&](QWidget* window) { visitor.answer(window); });
        visitor.event("open", [&] { main.LoadBillDB(victims[0].path); });
        const bool opened = isBadOpen();
        if (opened) {
            ++windows;
            bad.pragma("PRAGMA synchronous=OFF");
            visitor.look();
            if (&victim > &victims[1])
                visitor.browse();
            visitor.work(edits);
            if (&victim <= &victims[1] && seed % 4 == 0)
                visitor.browse();
            visitor.event("close", [&] { main.commandBars()->execute(260); });
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        EXPECT_FALSE(isBadOpen());
        worked += visitor.worked();
        if (visitor.slowest() > slowest) {
            slowest = visitor.slowest();
            slowestEvent = visitor.slowestEvent();
        }
        const bool told = !answers.takeSeen().isEmpty();
        errors += told ? 1 : 0;
        EXPECT_TRUE(opened || told) << "nothing says why the library was not opened";
    }

    void expectBesideIsGood(unsigned seed) {
        const ModalAnswers noMessages;
        good.activate();
        ASSERT_EQ(main.activeEditor()->DBFilePath(), beside);
        EXPECT_EQ(besideShows(), expected);
        const QString unit = QString::number(seed);
        EXPECT_TRUE(good.edit(good.bills(), 0, u"Unit"_s, unit));
        EditorDriver::settle();
        EXPECT_EQ(rowsInFile(beside, "SELECT Unit FROM tblBill WHERE Code='010101001'"), QStringList{unit});
        expected = besideShows();
    }

    const QString beside = dataPath + u"beside.bdb"_s;
    std::vector<Victim> victims;
    frmMain main;
    EditorDriver good{&main, beside};
    EditorDriver bad{&main, dataPath + u"damaged.bdb"_s};
    std::string expected;
    Watchdog watchdog;
    int windows = 0;
    int errors = 0;
    int worked = 0;
    qint64 slowest = 0;
    std::string slowestEvent;
};

/// A million rows in one table of the good library: `codes` where they are spread over it, `ids` where all belong to
/// the first chapter, bill, feature or content.
struct Million {
    const char* name;
    const char* statement;
};

const Million millions[] = {
    {"bills", "tblBill(Code,Name,Unit) SELECT printf('%09d',n),'清单'||n,'m' FROM r"},
    {"bills of one chapter", "tblBill(Code,Name,Unit) SELECT '010101001','清单'||n,'m' FROM r"},
    {"chapters",
     "tblSYB(Code,Name) SELECT CASE WHEN n<100 THEN printf('%02d',n) WHEN n<10000 THEN printf('%04d',n) "
     "ELSE printf('%06d',n) END,'章'||n FROM r"},
    {"features", "tblBillSpec(BillID,Name,Type) SELECT n/10,'特征'||n,2 FROM r"},
    {"features of one bill", "tblBillSpec(BillID,Name,Type) SELECT 1,'特征'||n,2 FROM r"},
    {"values", "tblSpecEnum(SpecID,EigenValue) SELECT 1,'值'||n FROM r"},
    {"contents", "tblCont(Code,Num,Cont,Prof,BillID) SELECT printf('%09d',n),n%7,'内容'||n,'01',n/10 FROM r"},
    {"contents of a hundred bills",
     "tblCont(Code,Num,Cont,Prof,BillID) SELECT '010101001',n,'内容'||n,'01',n/10000 FROM r"},
    {"rations",
     "tblContDe(ContID,SubNum,SubCont,Deh,Name,DekID) SELECT n/10,n%3,'细目'||n%3,'A'||n,'定额','GONE' FROM r"},
    {"rations of one content",
     "tblContDe(ContID,SubNum,SubCont,Deh,Name,DekID) SELECT 1,1,'细目','A'||n,'定额','GONE' FROM r"},
};

}  // namespace

TEST_F(Damage, NeverHarmsTheWindow) {
    const bool one = qEnvironmentVariableIsSet("TESSEL_TEST_SEED");
    const int files = one ? 1 : extent(116, 4'000);
    const int firstSeed = one ? qEnvironmentVariableIntValue("TESSEL_TEST_SEED") : 0;
    const std::vector<DamageKind>& kinds = damageKinds();
    // Libraries above all: they are what comes from elsewhere.
    constexpr int victimOf[] = {0, 3, 2, 1, 0, 0, 3, 0};
    std::map<std::string, int> counted;
    for (int i = 0; i < files; ++i) {
        const int seed = firstSeed + i;
        const auto number = static_cast<std::size_t>(seed);
        const DamageKind& kind = kinds[number % kinds.size()];
        const Victim& victim = victims[static_cast<std::size_t>(victimOf[number / kinds.size() % std::size(victimOf)])];
        const std::string name = std::string(victim.name) + ", " + kind.name + ", seed " + std::to_string(seed);
        SCOPED_TRACE(name);
        watchdog.watchFile(name);
        restore();
        if (&victim == &victims[1])
            copyTo(victim.path, victim.good);
        BadFile file(victim.path, victim.password, static_cast<unsigned>(seed));
        if (!succeeds([&] { kind.apply(file); }))
            continue;
        ++counted[victim.name];
        visit(static_cast<unsigned>(seed), victim, 4);
        expectBesideIsGood(static_cast<unsigned>(seed));
        ASSERT_FALSE(HasFailure());
    }
    restore();
    EXPECT_EQ(rowsInFile(beside, "PRAGMA integrity_check"), QStringList{u"ok"_s});
    QString kindsCounted;
    for (const auto& [name, count] : counted)
        kindsCounted += u"%1 %2, "_s.arg(count).arg(QString::fromStdString(name));
    reportFigures(
        u"damaged files: %1%2 windows opened, %3 files with a message, %4 edits and commands tried, "
        "slowest event %5 ms (%6)"_s.arg(kindsCounted)
            .arg(windows)
            .arg(errors)
            .arg(worked)
            .arg(slowest)
            .arg(QString::fromStdString(slowestEvent)));
}

TEST_F(Damage, AMillionRowsAreOnlyMany) {
    for (int i = 0; i < extent(1, static_cast<int>(std::size(millions))); ++i) {
        SCOPED_TRACE(millions[i].name);
        watchdog.watchFile(millions[i].name);
        restore();
        PlainDatabase library = BadFile(victims[0].path, {}, 0).open();
        // No code may be there twice.
        if (QByteArray(millions[i].name) == "chapters")
            library.run("DELETE FROM tblSYB");
        library.run(QString::fromUtf8(millions[i].statement)
                        .prepend(u"INSERT INTO "_s)
                        .replace(u" SELECT "_s,
                                 u" WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT "
                                 "n+1 FROM r WHERE n<1000000) SELECT "_s));
        visit(4, victims[0], 4);
        expectBesideIsGood(4);
        reportFigures(u"a million %1: slowest event %2 ms (%3)"_s.arg(QString::fromUtf8(millions[i].name))
                          .arg(slowest)
                          .arg(QString::fromStdString(slowestEvent)));
        slowest = 0;
    }
    restore();
}

TEST_F(Damage, PagesThatLeadBackEnd) {
    const int files = extent(1, 40);
    for (int seed = 0; seed < files; ++seed) {
        const Victim& victim = victims[seed % 3 == 0 ? 3 : 0];
        SCOPED_TRACE(seed);
        watchdog.watchFile("pages that lead back, seed " + std::to_string(seed));
        restore();
        BadFile file(victim.path, victim.password, static_cast<unsigned>(seed));
        leadPagesBack(file);
        visit(static_cast<unsigned>(seed), victim, 2);
        expectBesideIsGood(static_cast<unsigned>(seed));
        ASSERT_FALSE(HasFailure());
    }
    restore();
    reportFigures(u"pages that lead back: %1 files, slowest event %2 ms (%3)"_s.arg(files).arg(slowest).arg(
        QString::fromStdString(slowestEvent)));
}
