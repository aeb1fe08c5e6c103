#include "administration/LibrariesCommand.h"
#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "storage/RationLibraries.h"
#include "storage/SystemDatabase.h"
#include "tests/support/OtherProgram.h"

namespace {

const QString goodChapters = u"标题,编号,备注,章,节,作废\n土石方,1,,1,,\n\"人工,\n土方\",2,甲,1,1,否\n旧,3,,2,,是\n"_s;
const QString goodRations = u"章编号,编码,名称,单位\n\n2,a1-1,\"挖\"\"土\"\"\",m3\n1,A1-2,填土,m3\n"_s;

class Administration : public ::testing::Test {
protected:
    Administration() {
        QFile::remove(list);
        files(goodChapters.toUtf8(), goodRations.toUtf8());
    }

    void files(const QByteArray& chapters, const QByteArray& rations) const {
        overwrite(folder.filePath(u"章节.csv"_s), chapters);
        overwrite(folder.filePath(u"定额.csv"_s), rations);
    }

    /// Runs the command in `words`, with the CSV files where it takes them; the exit code and what it complained of,
    /// files without their folder.
    QString run(const QString& words) {
        QStringList arguments = words.split(u' ');
        if (words.startsWith(u"make"_s) || words.startsWith(u"check"_s))
            arguments << u"--chapters"_s << folder.filePath(u"章节.csv"_s) << u"--rations"_s
                      << folder.filePath(u"定额.csv"_s);
        QString complaints;
        said.clear();
        QTextStream good(&said), bad(&complaints);
        const int code = runLibrariesCommand(arguments, good, bad);
        return QString::number(code) + u' ' + complaints.remove(folder.path() + u'/').section(u'\n', 0, 0);
    }

    const QString list = appPath + u"tessel.dat"_s;
    const QTemporaryDir folder;
    QString said;
};

}  // namespace

TEST_F(Administration, ReadsWhatSpreadsheetsSave) {
    const QString make = u"make GD01 --name 建筑 --region 广东省 --file 甲.db"_s;
    const QString tabs =
        QString(goodChapters).replace(u"\"人工,\n"_s, u"\"人工、\n"_s).replace(u',', u'\t').replace(u'、', u',');
    QStringEncoder gbk("GB18030");
    for (const auto& [chapters, rations] :
         {std::pair(goodChapters.toUtf8(), "\xEF\xBB\xBF" + goodRations.toUtf8()),
          {gbk(goodChapters), gbk(goodRations)},
          {tabs.toUtf8(), QString(goodRations).replace(u',', u';').toUtf8()},
          {QString(goodChapters).replace(u'\n', u"\r\n"_s).toUtf8(),
           QByteArray("\xFF\xFE") + QStringEncoder(QStringEncoder::Utf16LE)(goodRations)}}) {
        files(chapters, rations);
        EXPECT_EQ(run(make), u"0 "_s);
        EXPECT_TRUE(said.contains(u"没有使用的列：备注"_s));
        const QString path = rationLibraryPath(u"GD01"_s);
        EXPECT_EQ(rowsInFile(path, "SELECT * FROM DeSYB"),
                  QStringList({u"1|1|0|0|0|0|土石方|0"_s, u"2|1|1|0|0|0|人工,\n土方|0"_s, u"3|2|0|0|0|0|旧|1"_s}));
        EXPECT_EQ(rowsInFile(path, "SELECT * FROM DEB"),
                  QStringList({u"1|2|a1-1|挖\"土\"|m3"_s, u"2|1|A1-2|填土|m3"_s}));
    }
}

TEST_F(Administration, TellsEveryMistakeWithFileAndLineAndWritesNothing) {
    const QString c = u"编号,章,节,标题,作废\n1,1,,土石方,\n"_s, r = u"章编号,编码,名称,单位\n1,A1,挖土,m3\n"_s;
    const std::tuple<QString, QString, QString> cases[] = {
        {u"编号,标题\n1,土"_s, r, u"章节.csv:1: 缺少“章”列"_s},
        {u"编号,章,章,标题\n1,1,1,土"_s, r, u"章节.csv:1: “章”列有 2 个"_s},
        {QString(), r, u"章节.csv:1: 缺少“编号”列"_s},
        {c + u"1,2,,甲,"_s, r, u"章节.csv:3: 编号 1 与第 2 行重复"_s},
        {c + u"2,1,,甲,"_s, r, u"章节.csv:3: 章节 1 与第 2 行重复"_s},
        {c + u"x,2,,甲,"_s, r, u"章节.csv:3: “编号”应为正整数：x"_s},
        {c + u"2,1,一,甲,"_s, r, u"章节.csv:3: “节”应为正整数，不用的级空着：一"_s},
        {c + u"2,,1,甲,"_s, r, u"章节.csv:3: “章”是空的"_s},
        {c + u"2,2,1,甲,"_s, r, u"章节.csv:3: 没有上级章节 2"_s},
        {c + u"2,2,,甲,1\n3,2,1,乙,"_s, r, u"章节.csv:4: 上级章节 2 已作废，这一章节也应作废"_s},
        {c + u"2,2,,甲,废"_s, r, u"章节.csv:3: “作废”应为是（1）、否（0）或空着：废"_s},
        {u"编号,章,节,小节,标题\n1,1,,1,土"_s, r, u"章节.csv:2: 有“小节”，它的上一级却空着"_s},
        {c + u"2,2,,\"甲,"_s, r, u"章节.csv:3: 引号没有成对"_s},
        {c, r + u"9,A2,挖,m"_s, u"定额.csv:3: 没有编号为 9 的章节"_s},
        {c, r + u"1,a1,挖,m"_s, u"定额.csv:3: 编码 a1 与第 2 行重复（不分大小写）"_s},
        {c, r + u"1,A2,挖"_s, u"定额.csv:3: 有 3 个字段，应为 4 个"_s},
        {c, r + u"1,A2,,m"_s, u"定额.csv:3: “名称”是空的"_s},
        {c, r + u"1,A2,it's,m"_s, u"定额.csv:3: “名称”中不能有英文单引号（'）和空字符，请改用中文引号：it's"_s},
        {c, r + u"1,A2,挖,"_s + QString(26, u'm'), u"定额.csv:3: “单位”有 26 个字，最多 25 个："_s + QString(25, u'm')},
    };
    for (const auto& [chapters, rations, complaint] : cases) {
        files(chapters.toUtf8(), rations.toUtf8());
        EXPECT_EQ(run(u"make NEW --name 新 --region 新省"_s), u"1 "_s + complaint);
    }
    files(goodChapters.toUtf8(), "\xff\xff");
    EXPECT_EQ(run(u"check"_s), u"1 定额.csv:1: 既不是 UTF-8 文本，也不是 GBK 文本"_s);
    EXPECT_FALSE(QFile::exists(list) || QFile::exists(dataPath + u"新省"_s));
}

TEST_F(Administration, ListsLibrariesAndLeavesTheOthersAsTheyAre) {
    EXPECT_EQ(run(u"make A --name 甲 --region 广东省 --profession 01 --default-for x.bdb"_s), u"0 "_s);
    OtherProgram(list, systemKey).run("ALTER TABLE SysBaseData ADD COLUMN more");
    OtherProgram(list, systemKey).run("UPDATE SysBaseData SET more='其他'");
    EXPECT_EQ(run(u"make B --name 乙 --region 湖南省"_s), u"0 "_s);
    EXPECT_TRUE(said.contains(u"地区不是广东省"_s));
    EXPECT_EQ(run(u"make A --name 丙"_s), u"0 "_s);
    const QStringList both{u"A|丙|x.bdb|甲.db|广东省|01|其他"_s, u"B|乙||乙.db|湖南省||NULL"_s};
    EXPECT_EQ(OtherProgram(list, systemKey).run("SELECT * FROM SysBaseData"), both);
    EXPECT_FALSE(bytesOf(list).startsWith("SQLite format 3") || bytesOf(list).contains("SysBaseData")) << "protected";
    for (const auto& [words, answer] :
         {std::pair(u"make C --name 丁"_s, u"1 定额库 C 还没有登记，必须写 --name 和 --region"_s),
          {u"make C --name 丁 --region 湖南省 --file 乙.DB"_s,
           u"1 文件 乙.db 已由定额库 B 使用，请用 --file 另取一个"_s},
          {u"make C --name 丁 --region ../x"_s, u"1 --region 不能含有这些字符：'\\/:*?\"<>|"_s},
          {u"make B --default-for x.bdb"_s, u"1 x.bdb 的默认定额库已经是 A"_s},
          {u"make B|C --name 丁 --region 湖南省"_s, u"1 编号不能含有这些字符：'|;#"_s},
          {u"remove"_s, u"2 应写一个编号（tessel-libraries --help 显示用法）"_s}})
        EXPECT_EQ(run(words), answer);
    EXPECT_EQ(OtherProgram(list, systemKey).run("SELECT * FROM SysBaseData"), both);
    const QString library = rationLibraryPath(u"B"_s);
    files(goodChapters.toUtf8(), goodRations.toUtf8().replace("A1-2", "new"));
    overwrite(library + u"-journal"_s, "left by another program");
    EXPECT_THROW(run(u"make B --name 戊"_s), Error);
    EXPECT_EQ(rowsInFile(library, "SELECT DEH FROM DEB"), QStringList({u"a1-1"_s, u"A1-2"_s}));
    EXPECT_EQ(run(u"remove A"_s), u"0 "_s);
    EXPECT_EQ(run(u"list"_s), u"0 "_s);
    EXPECT_EQ(said, u"B\t乙\t湖南省\t乙.db\t\t\n"_s);
}
