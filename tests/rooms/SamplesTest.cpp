#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "samples/builder/SampleBuilder.h"
#include "storage/LibraryConnection.h"
#include "tests/support/OtherProgram.h"

using namespace Qt::StringLiterals;

namespace {

const QString sources = QStringLiteral(TESSEL_SAMPLE_SOURCES);
const QString billLibrary = u"Data/建设工程清单2013.bdb"_s;

/// Whatever is in the samples fits together, independently of how they were made.
TEST(Samples, HaveNoRowThatIsWrong) {
    const QTemporaryDir home;
    EXPECT_EQ(buildSamples(sources, home.path(), false).complaints, QStringList());
    const std::unique_ptr<Connection> bills = GetOrmConn(home.filePath(billLibrary));
    ASSERT_TRUE(bills);
    const auto count = [&](const SqlText& from) {
        return bills->OpenRecordset(sql("SELECT count(*) AS n FROM ", from)).number("n");
    };
    EXPECT_GE(count("dbext.tblExplain WHERE Code IN (SELECT Code FROM tblSYB)"), 5);
    EXPECT_GE(count("tblBill"), 120);
    bills->Execute("CREATE TEMP TABLE rations (DekID,DEH,MC,DW)");
    for (const QStringList& library : OtherProgram(home.filePath(u"tessel.dat"_s), "830547")
                                          .rows(u"SELECT DekId,rgnName||'/'||DekFilename FROM SysBaseData"_s)) {
        const QString path = home.filePath(u"Data/"_s + library[1]);
        if (!QFile::exists(path))
            continue;
        bills->Execute(sql("ATTACH '", path, "' AS dek KEY ''"));
        bills->Execute(sql("INSERT INTO rations SELECT '", library[0],
                           "',DEH,MC,DW FROM dek.DEB WHERE sybID IN (SELECT sybID FROM dek.DeSYB WHERE isdel=0)"));
        bills->Execute("DETACH dek");
    }
    EXPECT_GE(count("rations"), 1000);
    EXPECT_GE(count("(SELECT DISTINCT DekID FROM rations)"), 4);
    for (const SqlText& wrong :
         {SqlText("SELECT Code FROM tblSYB WHERE length(Code)>2 AND substr(Code,1,length(Code)-2) NOT IN "
                  "(SELECT Code FROM tblSYB)"),
          SqlText("SELECT Code FROM tblBill WHERE substr(Code,1,6) NOT IN (SELECT Code FROM tblSYB) OR length(Code)<>9 "
                  "OR Name='' OR Unit='' OR Rule='' OR Cont NOT LIKE '1.%'"),
          SqlText("SELECT substr(Code,1,6) FROM tblBill GROUP BY 1 HAVING max(substr(Code,7))+0<>count(*)"),
          SqlText("SELECT BillID FROM tblCont GROUP BY 1 HAVING max(Num)<>count(*)"),
          SqlText("SELECT ContID FROM tblContDe GROUP BY 1 HAVING max(SubNum)<>count(DISTINCT SubNum)"),
          SqlText("SELECT ContID FROM tblContDe GROUP BY ContID,SubNum HAVING count(DISTINCT SubCont)<>1"),
          SqlText("SELECT c.ID FROM tblCont c JOIN tblBill b ON b.ID=c.BillID WHERE c.Code<>b.Code OR Prof='' OR "
                  "length(Prof)%2<>0 OR NOT EXISTS (SELECT 1 FROM tblContDe WHERE ContID=c.ID)"),
          SqlText("SELECT s.ID FROM tblBillSpec s WHERE Type NOT IN (0,1,2,3) OR DefVal<>ifnull((SELECT "
                  "group_concat(EigenValue) FROM tblSpecEnum WHERE SpecID=s.ID AND IsUse=1),'')"),
          SqlText("SELECT Deh FROM tblContDe WHERE Deh<>'' AND (DekID,Deh,Name,Unit) NOT IN (SELECT * FROM rations)")})
        EXPECT_TRUE(bills->OpenRecordset(wrong).EndOfFile()) << qPrintable(wrong.text());
}

TEST(Samples, AnEditedLibraryIsKeptUnlessForced) {
    const QTemporaryDir home;
    const QString library = home.filePath(billLibrary);
    const auto notes = [&](bool forced) { return buildSamples(sources, home.path(), forced).notes.size(); };
    const auto nameOfFirst = [&] { return rowsInFile(library, "SELECT Name FROM tblBill WHERE ID=1").value(0); };
    EXPECT_EQ(notes(false), 0);
    EXPECT_EQ(notes(false), 0) << "an untouched one is made anew";
    OtherProgram(library).run("UPDATE tblBill SET Name='改过' WHERE ID=1");
    EXPECT_EQ(notes(false), 1);
    EXPECT_EQ(nameOfFirst(), u"改过"_s);
    EXPECT_EQ(notes(true), 0);
    EXPECT_EQ(nameOfFirst(), u"平整场地"_s);

    overwrite(library, "not a database");
    EXPECT_EQ(notes(false), 1);
    EXPECT_EQ(bytesOf(library), "not a database");
}

/// Small sources that are right, as a spreadsheet saves them: a mark, CR LF, quotes, a blank row.
const struct {
    const char* file;
    QByteArray text;
} smallSources[] = {
    {"libraries.csv",
     "\xEF\xBB\xBF编号,名称,文件名,地区,专业,默认所属清单库,源文件夹\r\n"
     "GD2018ZHDE01,\"甲, \"\"一\"\"\",a.db,广东省,01,建设工程清单2013.bdb,a\r\n"},
    {"a/chapters.csv", "编号,章,节,小节,项,子项,标题,作废\r\n1,1,,,,,土方,\r\n2,1,1,,,,挖土,\r\n"},
    {"a/rations.csv", "章编号,编码,名称,单位\r\n2,A1-1,挖土,m3\r\n"},
    {"chapters.csv", "编码,名称,附注\n01,一,\n0101,二,\n010101,三,\n"},
    {"companion.csv", "编码,说明\n01,文字\n"},
    {"bills.csv", "编码,前缀,名称,单位,计算规则\r\n010101001,,平整场地,m2,\"一\r\n二\"\r\n,,,,\r\n"},
    {"features.csv", "清单编码,特征,类型,单位,取值,默认值\n010101001,土壤类别,枚举,,一;二,二\n"},
    {"contents.csv",
     "清单编码,工作内容,专业,二级工作内容,定额库,定额编码\n010101001,挖土,0104,人工,GD2018ZHDE01,a1-1\n"},
};

/// Builds samples from the small sources with `line` added to one of the files.
QStringList complaintsOf(const QTemporaryDir& home, const QString& file, const QByteArray& line) {
    const QTemporaryDir folder;
    for (const auto& source : smallSources) {
        const QString path = folder.filePath(QString::fromUtf8(source.file));
        QDir().mkpath(QFileInfo(path).path());
        overwrite(path, source.text + (file == QLatin1String(source.file) ? line : QByteArray()));
    }
    return buildSamples(folder.path(), home.path(), false).complaints;
}

TEST(Samples, AMistakeIsToldWithFileAndLineAndNothingIsWritten) {
    const QTemporaryDir good;
    EXPECT_EQ(complaintsOf(good, {}, {}), QStringList());
    EXPECT_EQ(rowsInFile(good.filePath(billLibrary), "SELECT Rule,Cont,Deh FROM tblBill,tblContDe"),
              QStringList{u"一\r\n二|1.挖土|A1-1"_s});
    const struct {
        QString file;
        QByteArray line;  ///< added at the end of the file
        int number;       ///< line of the only complaint
    } mistakes[] = {
        {u"libraries.csv"_s, "GD2018ZHDE03,乙\n", 3},
        {u"a/chapters.csv"_s, "2,2,,,,,又是二,\n", 4},
        {u"a/chapters.csv"_s, "3,1,,2,,,跳级,\n", 4},
        {u"a/chapters.csv"_s, "3,2,1,,,,没有章,\n", 4},
        {u"a/chapters.csv"_s, "3,一,,,,,不是数,\n", 4},
        {u"a/rations.csv"_s, "3,A1-2,挖土,m3\n", 3},
        {u"a/rations.csv"_s, "2,a1-1,挖土,m3\n", 3},
        {u"chapters.csv"_s, "0201,二,\n", 5},
        {u"companion.csv"_s, "01,\n", 3},
        {u"bills.csv"_s, "010101003,,挖土,m3,\n", 5},
        {u"bills.csv"_s, "010102001,,挖土,m3,\n", 5},
        {u"bills.csv"_s, "010101002,,Tom's,m3,\n", 5},
        {u"bills.csv"_s, "010101002,123456789,挖土,m3,\n", 5},
        {u"bills.csv"_s, "010101002,,\"挖土,m3,\n", 5},
        {u"bills.csv"_s, "010101002,,\xff,m3,\n", 1},
        {u"features.csv"_s, "010101001,深度,数字,m,,\n", 3},
        {u"features.csv"_s, "010101001,深度,数值,m,1;2,3\n", 3},
        {u"features.csv"_s, "010101009,深度,数值,m,,\n", 3},
        {u"contents.csv"_s, "010101001,运土,1,人工,,\n", 3},
        {u"contents.csv"_s, "010101001,运土,01,,,\n", 3},
        {u"contents.csv"_s, ",,,机械,GD2018ZHDE01,A1-3\n", 3},
    };
    for (const auto& mistake : mistakes) {
        const QTemporaryDir home;
        const QStringList complaints = complaintsOf(home, mistake.file, mistake.line);
        EXPECT_EQ(complaints.size(), 1) << qPrintable(complaints.join(u'\n')) << mistake.line.constData();
        EXPECT_TRUE(complaints.value(0).startsWith(u"%1:%2: "_s.arg(mistake.file).arg(mistake.number)))
            << qPrintable(complaints.join(u'\n'));
        EXPECT_FALSE(QDirIterator(home.path(), QDir::Files, QDirIterator::Subdirectories).hasNext());
    }
}

}  // namespace
