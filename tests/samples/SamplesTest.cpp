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

using namespace Qt::StringLiterals;

namespace {

const QString sources = QStringLiteral(TESSEL_SAMPLE_SOURCES);

/// The samples as a user finds them, made once for all cases.
class Samples : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<QTemporaryDir>();
        const SampleResult result = buildSamples(sources, folder->path(), false);
        ASSERT_TRUE(result.complaints.isEmpty()) << qPrintable(result.complaints.join(u'\n'));
        EXPECT_TRUE(result.notes.isEmpty());
        Connection system;
        system.Open(joinPath(folder->path(), u"tessel.dat"_s), QString::fromLatin1(systemKey),
                    Connection::readWriteCreate);
        Recordset row = system.OpenRecordset("SELECT * FROM SysBaseData");
        for (; !row.EndOfFile(); row.MoveNext()) {
            const QString id = row.text("DekId");
            libraryFiles[id] = inData(row.text("rgnName") + u'/' + row.text("DekFilename"));
            regions << row.text("rgnName");
            if (!row.text("QdkFileName").isEmpty()) {
                defaultId = id;
                billLibrary = inData(row.text("QdkFileName"));
            }
        }
    }
    static void TearDownTestSuite() { folder.reset(); }

    static QString inData(const QString& name) { return QDir(folder->path()).filePath(u"Data/"_s + name); }
    static QStringList bills(const SqlText& query) { return rowsInFile(billLibrary, query); }

    /// Consecutive numbers, beginning at 1, within each first field of rows "owner|number".
    static void expectNumbered(const QStringList& rows) {
        QMap<QString, int> last;
        for (const QString& row : rows)
            EXPECT_EQ(row.section(u'|', 1).toInt(), ++last[row.section(u'|', 0, 0)]) << qPrintable(row);
    }

    static inline std::unique_ptr<QTemporaryDir> folder;
    static inline QMap<QString, QString> libraryFiles;
    static inline QSet<QString> regions;
    static inline QString defaultId;
    static inline QString billLibrary;
};

}  // namespace

TEST_F(Samples, billLibraryIsWholeAndDenselyNumbered) {
    EXPECT_EQ(bills("PRAGMA integrity_check"), QStringList{u"ok"_s});
    EXPECT_EQ(bills("SELECT count(*) FROM sqlite_master WHERE name<>'sqlite_sequence'"), QStringList{u"9"_s});
    EXPECT_GE(bills("SELECT ID FROM tblBill").size(), 120);
    EXPECT_GE(bills("SELECT DISTINCT substr(Code,1,2) FROM tblBill").size(), 3);
    EXPECT_GE(bills("SELECT DISTINCT Prof FROM tblCont").size(), 4);
    EXPECT_GE(bills("SELECT ID FROM tblSpecEnum WHERE IsUse=1").size(), 100);
    EXPECT_EQ(bills("SELECT Name,Unit FROM tblBill WHERE Code='010101001'"), QStringList{u"平整场地|m2"_s});
    expectNumbered(bills("SELECT substr(Code,1,6),substr(Code,7) FROM tblBill ORDER BY Code"));
    expectNumbered(bills("SELECT BillID,Num FROM tblCont ORDER BY BillID,Num"));
    expectNumbered(bills("SELECT DISTINCT ContID,SubNum FROM tblContDe ORDER BY ContID,SubNum"));
}

TEST_F(Samples, billLibraryHasNoRowThatIsWrong) {
    // Chapters without the one above; bills without a chapter or a text; contents and details that do not fit them;
    // features whose default is not the one value in use.
    for (const SqlText& wrong :
         {SqlText("SELECT Code FROM tblSYB WHERE length(Code)>2 AND substr(Code,1,length(Code)-2) NOT IN "
                  "(SELECT Code FROM tblSYB)"),
          SqlText("SELECT Code FROM tblBill WHERE substr(Code,1,6) NOT IN (SELECT Code FROM tblSYB WHERE "
                  "length(Code)=6) OR length(Code)<>9 OR Name='' OR Unit='' OR Rule='' OR Cont=''"),
          SqlText("SELECT c.ID FROM tblCont c JOIN tblBill b ON b.ID=c.BillID WHERE c.Code<>b.Code OR Prof='' OR "
                  "length(Prof)%2<>0 OR NOT EXISTS (SELECT 1 FROM tblContDe WHERE ContID=c.ID)"),
          SqlText("SELECT ContID FROM tblContDe GROUP BY ContID,SubNum HAVING count(DISTINCT SubCont)<>1"),
          SqlText("SELECT s.ID,s.Name FROM tblBillSpec s WHERE Type NOT IN (0,1,2,3) OR DefVal<>ifnull((SELECT "
                  "group_concat(EigenValue) FROM tblSpecEnum WHERE SpecID=s.ID AND IsUse=1),'')"),
          SqlText("SELECT ID FROM tblSpecEnum WHERE SpecID NOT IN (SELECT ID FROM tblBillSpec)")})
        EXPECT_EQ(bills(wrong), QStringList());
}

TEST_F(Samples, rationsStandInTheLibrariesThatContentsName) {
    EXPECT_GE(libraryFiles.size(), 3);
    EXPECT_GE(regions.size(), 2);
    EXPECT_TRUE(regions.contains(u"广东省"_s));
    QSet<QString> rations;
    int deepest = 0;
    for (auto library = libraryFiles.cbegin(); library != libraryFiles.cend(); ++library) {
        const QString& file = library.value();
        ASSERT_TRUE(QFile::exists(file)) << qPrintable(file);
        EXPECT_GE(rowsInFile(file, "SELECT ID FROM DEB").size(), 200) << qPrintable(file);
        EXPECT_EQ(rowsInFile(file,
                             "SELECT DEH FROM DEB WHERE sybID NOT IN (SELECT sybID FROM DeSYB WHERE isdel=0) OR "
                             "MC='' OR DW='' OR MC LIKE '%{%' OR MC LIKE '%;%' GROUP BY DEH UNION ALL "
                             "SELECT upper(DEH) FROM DEB GROUP BY 1 HAVING count(*)>1"),
                  QStringList());
        const QString levels = rowsInFile(file, "SELECT max((ZH>0)+(JH>0)+(XH>0)+(MH>0))+1 FROM DeSYB").value(0);
        EXPECT_GE(levels.toInt(), 2);
        deepest = qMax(deepest, levels.toInt());
        for (const QString& ration : rowsInFile(file, "SELECT upper(DEH),MC,DW FROM DEB"))
            rations << library.key() + u'|' + ration;
    }
    EXPECT_EQ(deepest, 5);
    const QStringList named = bills("SELECT DekID,upper(Deh),Name,Unit FROM tblContDe WHERE Deh<>''");
    EXPECT_GE(named.size(), 300);
    for (const QString& row : named)
        EXPECT_TRUE(rations.contains(row)) << qPrintable(row);
}

TEST_F(Samples, defaultLibraryIsListedForSeveralLeadingCodesAndTheCompanionIsAttached) {
    int listed = 0;
    const QStringList leading = bills("SELECT DISTINCT substr(Code,1,2) FROM tblBill");
    for (const QString& code : leading)
        listed += libraryFiles.contains(defaultId.left(10) + code);
    EXPECT_TRUE(listed >= 2 && listed < leading.size()) << listed;
    const std::unique_ptr<Connection> connection = GetOrmConn(billLibrary);
    ASSERT_TRUE(connection);
    EXPECT_GE(
        connection->OpenRecordset("SELECT count(*) AS n FROM dbext.tblExplain WHERE Code IN (SELECT Code FROM tblSYB)")
            .number("n"),
        5);
}

TEST_F(Samples, anEditedLibraryIsKeptUnlessForced) {
    const QTemporaryDir home;
    const auto build = [&](bool forced) { return buildSamples(sources, home.path(), forced).notes; };
    build(false);
    const QString library = QDir(home.path()).filePath(u"Data/"_s + QFileInfo(billLibrary).fileName());
    const auto nameOfFirst = [&] { return rowsInFile(library, "SELECT Name FROM tblBill WHERE ID=1").value(0); };
    QFile::remove(library);
    EXPECT_TRUE(build(false).isEmpty());
    EXPECT_TRUE(build(false).isEmpty()) << "an untouched one is made anew";
    {
        Connection connection;
        connection.Open(library, QString(), Connection::readWriteCreate);
        connection.Execute("UPDATE tblBill SET Name='改过' WHERE ID=1");
    }
    EXPECT_TRUE(build(false).join(u'|').contains(QFileInfo(library).fileName()));
    EXPECT_EQ(nameOfFirst(), u"改过"_s);
    EXPECT_TRUE(build(true).isEmpty());
    EXPECT_EQ(nameOfFirst(), u"平整场地"_s);

    // A file that is not ours at all is a user's file too.
    QFile foreign(library);
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
    foreign.write("not a database");
    foreign.close();
    EXPECT_EQ(build(false).size(), 1);
    EXPECT_EQ(foreign.size(), 14);
}
