#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "samples/builder/RationSource.h"
#include "samples/builder/SampleBuilder.h"

using namespace Qt::StringLiterals;

namespace {

/// A small set of sources that is right, to be spoiled line by line.
class Sources {
public:
    Sources() {
        write("libraries.txt", "定额库 GD2018ZHDE01 | 甲 | a.db | 广东省 | 01 | a.bdb | rations/a.txt\n");
        write("rations/a.txt", "章 1 土方\n编号 A1\n定额 挖{土;石} | m3\n");
        write("chapters.txt", "章 01 一\n章 0101 二\n章 010101 三\n");
        write("companion.txt", "说明 01 | 文字\n");
        write("bills/a.txt",
              "默认定额库 GD2018ZHDE01\n"
              "清单 010101001 平整场地 | m2\n"
              "特征 土壤类别 | 枚举 | | 一; *二\n"
              "内容 挖土 | 01\n"
              "细目 人工 : a1-2\n");
    }

    void write(const char* name, const QByteArray& text) {
        const QString path = QDir(m_folder.path()).filePath(QString::fromUtf8(name));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(text);
    }

    SampleResult build() { return buildSamples(m_folder.path(), home(), false); }
    QString home() const { return m_home.path(); }

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_home;
};

struct Mistake {
    const char* file;
    QByteArray line;     ///< added at the end of the file
    const char* blamed;  ///< what the only complaint begins with
};

TEST(SampleSources, aMistakeIsReportedWithFileAndLineAndNothingIsWritten) {
    ASSERT_TRUE(Sources().build().complaints.isEmpty());
    const Mistake mistakes[] = {
        {"libraries.txt", "定额库 GD2018ZHDE03 | 乙\n", "libraries.txt:2: "},
        {"rations/a.txt", "定额 挖{土;石 | m3\n", "rations/a.txt:4: "},
        {"rations/a.txt", "定鹅 挖土 | m3\n", "rations/a.txt:4: "},
        {"chapters.txt", "章 0201 二\n", "chapters.txt:4: "},
        {"companion.txt", "说明 09 | 文字\n", "companion.txt:2: "},
        {"bills/a.txt", "# 注\n\n清单 010101003 挖土 | m3\n", "bills/a.txt:8: "},
        {"bills/a.txt", "清单 010102001 挖土 | m3\n", "bills/a.txt:6: "},
        {"bills/a.txt", "清单 010101002 Tom's | m3\n", "bills/a.txt:6: "},
        {"bills/a.txt", "清单 010101002 挖土 | m3 | 123456789\n", "bills/a.txt:6: "},
        {"bills/a.txt", "特征 深度 | 数字 | m |\n", "bills/a.txt:6: "},
        {"bills/a.txt", "特征 深度 | 数值 | m | *1; *2\n", "bills/a.txt:6: "},
        {"bills/a.txt", "细目 机械 : A1-3\n", "bills/a.txt:6: "},
        {"bills/a.txt", "细目 机械 : HN2020XHBZ01:A1-1\n", "bills/a.txt:6: "},
        {"bills/a.txt", "清单 010101002 挖土 | m3\n内容 运土 | 01\n", "bills/a.txt:6: "},
        {"bills/a.txt", "规则 \xff\n", "bills/a.txt: "},
    };
    for (const Mistake& mistake : mistakes) {
        Sources spoiled;
        spoiled.write(mistake.file, mistake.line);
        const QStringList complaints = spoiled.build().complaints;
        ASSERT_EQ(complaints.size(), 1) << mistake.line.constData() << qPrintable(complaints.join(u'\n'));
        EXPECT_TRUE(complaints.first().startsWith(QString::fromUtf8(mistake.blamed))) << qPrintable(complaints.first());
        EXPECT_TRUE(QDir(spoiled.home()).isEmpty());
    }
}

TEST(SampleSources, bracesStandForEveryChoiceTheLastChangingFirst) {
    EXPECT_EQ(expandedNames(u"挖{土;石} 深{2;4}m"_s).join(u'|'), u"挖土 深2m|挖土 深4m|挖石 深2m|挖石 深4m"_s);
    EXPECT_EQ(expandedNames(u"打夯"_s).join(u'|'), u"打夯"_s);
    for (const char* unbalanced : {"挖{土", "挖土}", "挖}土{", "a{b}c{"})
        EXPECT_TRUE(expandedNames(QString::fromUtf8(unbalanced)).isEmpty()) << unbalanced;
}

}  // namespace
