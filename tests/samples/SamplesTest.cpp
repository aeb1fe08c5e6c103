#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QSet>
#include <QTemporaryDir>
#include <memory>

#include "app/base/Paths.h"
#include "samples/builder/SampleBuilder.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

const QString sources = QStringLiteral(TESSEL_SAMPLE_SOURCES);

QStringList rowsOf(Connection& connection, const SqlText& query) {
    QStringList rows;
    for (Recordset found = connection.OpenRecordset(query); !found.EndOfFile(); found.MoveNext())
        rows << found.joined(QStringLiteral("|"));
    return rows;
}

/// The samples as a user finds them, made once for all cases.
class Samples : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<QTemporaryDir>();
        const SampleResult result = buildSamples(sources, folder->path(), false);
        ASSERT_TRUE(result.complaints.isEmpty()) << qPrintable(result.complaints.join(QLatin1Char('\n')));
        EXPECT_TRUE(result.notes.isEmpty());
        Connection system;
        system.Open(joinPath(folder->path(), QStringLiteral("tessel.dat")), QString::fromLatin1(systemKey),
                    Connection::readWriteCreate);
        Recordset row = system.OpenRecordset("SELECT * FROM SysBaseData");
        for (; !row.EndOfFile(); row.MoveNext()) {
            const QString id = row.text("DekId");
            libraryFiles[id] = inData(row.text("rgnName") + QLatin1Char('/') + row.text("DekFilename"));
            regions << row.text("rgnName");
            if (!row.text("QdkFileName").isEmpty()) {
                defaultId = id;
                billLibrary = inData(row.text("QdkFileName"));
            }
        }
    }
    static void TearDownTestSuite() { folder.reset(); }

    static QString inData(const QString& name) { return QDir(folder->path()).filePath(QStringLiteral("Data/") + name); }
    static QStringList bills(const SqlText& query) { return rowsInFile(billLibrary, query); }

    static inline std::unique_ptr<QTemporaryDir> folder;
    static inline QMap<QString, QString> libraryFiles;
    static inline QSet<QString> regions;
    static inline QString defaultId;
    static inline QString billLibrary;
};

TEST_F(Samples, billLibraryIsAWholeOneWithDenselyNumberedBills) {
    EXPECT_EQ(bills("PRAGMA integrity_check"), QStringList{QStringLiteral("ok")});
    EXPECT_EQ(bills("SELECT count(*) FROM sqlite_master WHERE name<>'sqlite_sequence'"),
              QStringList{QStringLiteral("9")});
    EXPECT_GE(bills("SELECT ID FROM tblBill").size(), 120);
    EXPECT_GE(bills("SELECT DISTINCT substr(Code,1,2) FROM tblBill").size(), 3);
    EXPECT_GE(bills("SELECT ID FROM tblBill WHERE CodePrefix<>''").size(), 3);
    EXPECT_EQ(bills("SELECT Code FROM tblSYB WHERE length(Code)>2 AND substr(Code,1,length(Code)-2) NOT IN "
                    "(SELECT Code FROM tblSYB)"),
              QStringList())
        << "chapters without the one above";
    EXPECT_EQ(bills("SELECT Code FROM tblBill WHERE substr(Code,1,6) NOT IN "
                    "(SELECT Code FROM tblSYB WHERE length(Code)=6) OR Name='' OR Unit='' OR Rule='' OR Cont=''"),
              QStringList());

    QMap<QString, int> last;
    for (const QString& code : bills("SELECT Code FROM tblBill ORDER BY Code")) {
        ASSERT_EQ(code.size(), 9);
        EXPECT_EQ(code.mid(6).toInt(), ++last[code.left(6)]) << qPrintable(code);
    }
    EXPECT_EQ(bills("SELECT Name||'|'||Unit FROM tblBill WHERE Code='010101001'"),
              QStringList{QStringLiteral("平整场地|m2")});
}

TEST_F(Samples, aFeatureHasAtMostOneValueInUseWhichIsItsDefault) {
    EXPECT_EQ(bills("SELECT DISTINCT Type FROM tblBillSpec ORDER BY Type"),
              (QStringList{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    EXPECT_EQ(bills("SELECT s.ID,s.Name FROM tblBillSpec s WHERE DefVal<>ifnull((SELECT group_concat(EigenValue) FROM "
                    "tblSpecEnum WHERE SpecID=s.ID AND IsUse=1),'')"),
              QStringList());
    EXPECT_GE(bills("SELECT ID FROM tblSpecEnum WHERE IsUse=1").size(), 100);
    EXPECT_EQ(bills("SELECT ID FROM tblSpecEnum WHERE SpecID NOT IN (SELECT ID FROM tblBillSpec)"), QStringList());
}

TEST_F(Samples, contentsAreNumberedAndTheirRationsStandInTheLibrariesTheyName) {
    QMap<QString, int> last;
    for (const QString& row : bills("SELECT BillID,Num FROM tblCont ORDER BY BillID,Num"))
        EXPECT_EQ(row.section(QLatin1Char('|'), 1).toInt(), ++last[row.section(QLatin1Char('|'), 0, 0)]);
    EXPECT_EQ(bills("SELECT c.ID FROM tblCont c JOIN tblBill b ON b.ID=c.BillID WHERE c.Code<>b.Code OR Prof='' OR "
                    "length(Prof)%2<>0 OR NOT EXISTS (SELECT 1 FROM tblContDe WHERE ContID=c.ID)"),
              QStringList());
    EXPECT_GE(bills("SELECT DISTINCT Prof FROM tblCont").size(), 4);
    EXPECT_EQ(bills("SELECT ContID FROM tblContDe GROUP BY ContID HAVING min(SubNum)<>1 OR "
                    "max(SubNum)<>count(DISTINCT SubNum)"),
              QStringList());
    EXPECT_EQ(bills("SELECT ContID FROM tblContDe GROUP BY ContID,SubNum HAVING count(DISTINCT SubCont)<>1"),
              QStringList());

    QMap<QString, QSet<QString>> rations;
    for (auto library = libraryFiles.cbegin(); library != libraryFiles.cend(); ++library) {
        ASSERT_TRUE(QFile::exists(library.value())) << qPrintable(library.value());
        for (const QString& ration : rowsInFile(library.value(), "SELECT upper(DEH),MC,DW FROM DEB"))
            rations[library.key()] << ration;
    }
    int checked = 0;
    for (const QString& row : bills("SELECT DekID,upper(Deh),Name,Unit FROM tblContDe WHERE Deh<>''")) {
        EXPECT_TRUE(rations[row.section(QLatin1Char('|'), 0, 0)].contains(row.section(QLatin1Char('|'), 1)))
            << qPrintable(row);
        ++checked;
    }
    EXPECT_GE(checked, 300);
}

TEST_F(Samples, rationLibrariesAreChapterTreesOfSeveralLevelsInTwoRegions) {
    EXPECT_GE(libraryFiles.size(), 3);
    EXPECT_GE(regions.size(), 2);
    EXPECT_TRUE(regions.contains(QStringLiteral("广东省")));
    int deepest = 0;
    for (const QString& file : std::as_const(libraryFiles)) {
        EXPECT_GE(rowsInFile(file, "SELECT ID FROM DEB").size(), 200) << qPrintable(file);
        EXPECT_EQ(rowsInFile(file,
                             "SELECT DEH FROM DEB WHERE sybID NOT IN (SELECT sybID FROM DeSYB WHERE isdel=0) OR "
                             "MC='' OR DW='' OR MC LIKE '%{%' OR MC LIKE '%;%'"),
                  QStringList());
        EXPECT_EQ(rowsInFile(file, "SELECT upper(DEH) FROM DEB GROUP BY 1 HAVING count(*)>1"), QStringList());
        const QString levels = rowsInFile(file, "SELECT max((ZH>0)+(JH>0)+(XH>0)+(MH>0))+1 FROM DeSYB").value(0);
        EXPECT_GE(levels.toInt(), 2);
        deepest = qMax(deepest, levels.toInt());
    }
    EXPECT_EQ(deepest, 5);
}

TEST_F(Samples, theDefaultLibraryOfABillIsListedForSeveralLeadingCodesButNotForAll) {
    ASSERT_EQ(defaultId.size(), 12);
    int listed = 0;
    int unlisted = 0;
    for (const QString& leading : bills("SELECT DISTINCT substr(Code,1,2) FROM tblBill"))
        ++(libraryFiles.contains(defaultId.left(10) + leading) ? listed : unlisted);
    EXPECT_GE(listed, 2);
    EXPECT_GE(unlisted, 1);
}

TEST_F(Samples, companionFileIsAttachedWithTheLibrary) {
    const std::unique_ptr<Connection> connection = GetOrmConn(billLibrary);
    ASSERT_TRUE(connection);
    EXPECT_GE(rowsOf(*connection, "SELECT Note FROM dbext.tblExplain WHERE Code IN (SELECT Code FROM tblSYB)").size(),
              5);
}

TEST_F(Samples, anEditedLibraryIsKeptUnlessForced) {
    const QTemporaryDir home;
    buildSamples(sources, home.path(), false);
    const QString library = QDir(home.path()).filePath(QStringLiteral("Data/") + QFileInfo(billLibrary).fileName());
    const auto edit = [&](const SqlText& statement) {
        Connection connection;
        connection.Open(library, QString(), Connection::readWriteCreate);
        connection.Execute(statement);
    };
    const auto nameOfFirst = [&] { return rowsInFile(library, "SELECT Name FROM tblBill WHERE ID=1").value(0); };
    QFile::remove(library);
    EXPECT_TRUE(buildSamples(sources, home.path(), false).notes.isEmpty());
    EXPECT_TRUE(buildSamples(sources, home.path(), false).notes.isEmpty()) << "an untouched one is made anew";

    edit("UPDATE tblBill SET Name='改过' WHERE ID=1");
    const SampleResult kept = buildSamples(sources, home.path(), false);
    ASSERT_EQ(kept.notes.size(), 1);
    EXPECT_TRUE(kept.notes.first().contains(QFileInfo(library).fileName()));
    EXPECT_EQ(nameOfFirst(), QStringLiteral("改过"));

    EXPECT_TRUE(buildSamples(sources, home.path(), true).notes.isEmpty());
    EXPECT_EQ(nameOfFirst(), QStringLiteral("平整场地"));

    // A file that is not ours at all is a user's file too.
    QFile::remove(library);
    QFile foreign(library);
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
    foreign.write("not a database");
    foreign.close();
    EXPECT_EQ(buildSamples(sources, home.path(), false).notes.size(), 1);
    EXPECT_EQ(foreign.size(), 14);
}

}  // namespace
