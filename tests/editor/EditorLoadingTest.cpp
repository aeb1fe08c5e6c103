#include <gtest/gtest.h>

#include <QFile>
#include <QTabWidget>

#include "app/base/Definitions.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/RationLibraries.h"
#include "editor/bills/BillPane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"
#include "storage/SystemDatabase.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"

namespace {

/// A system database with the given rows, each "DekId|DekName|QdkFileName", instead of the samples'.
class OwnSystemDatabase {
public:
    explicit OwnSystemDatabase(const QStringList& rows) {
        installSamples();
        QFile::remove(m_kept);
        QFile::rename(m_path, m_kept);
        Connection connection;
        connection.Open(m_path, QString::fromLatin1(systemKey), 6);
        connection.Execute("CREATE TABLE SysBaseData (DekId text, DekName text, QdkFileName text)");
        for (const QString& row : rows) {
            const QStringList fields = row.split(QLatin1Char('|'));
            connection.Execute(
                sql("INSERT INTO SysBaseData VALUES('", fields[0], "','", fields[1], "','", fields[2], "')"));
        }
    }
    ~OwnSystemDatabase() {
        QFile::remove(m_path);
        QFile::rename(m_kept, m_path);
    }

private:
    QString m_path = appPath + QStringLiteral("tessel.dat");
    QString m_kept = m_path + QStringLiteral(".kept");
};

}  // namespace

TEST(RationLibraries, TheFirstRowOfTheFileNameIsTheDefault) {
    const OwnSystemDatabase system(
        {QStringLiteral("B1|乙|a.bdb"), QStringLiteral("A1|甲|a.bdb"), QStringLiteral("C1|丙|c.bdb")});
    EXPECT_EQ(GetDefDekID(QStringLiteral("a.bdb")), QStringLiteral("B1"));
    EXPECT_EQ(GetDefDekID(QStringLiteral("A.bdb")), QString());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(GetDefDekID(QStringLiteral("it's.bdb")), QString());
    EXPECT_EQ(answers.seen().size(), 1);
}

TEST(RationLibraries, AreListedByName) {
    {
        const OwnSystemDatabase system({QStringLiteral("2|B|"), QStringLiteral("1|A|")});
        EXPECT_EQ(GetDekComboList(), QStringLiteral("#1;A|#2;B"));
    }
    {
        const OwnSystemDatabase system({QStringLiteral("2|B|")});
        EXPECT_EQ(GetDekComboList(), QStringLiteral("#2;B"));
    }
    const OwnSystemDatabase system({});
    EXPECT_EQ(GetDekComboList(), QString());
}

TEST(EditorLoading, AMissingSystemDatabaseIsReportedAndTheEditorWorks) {
    const QString path = copyOfSampleLibrary();
    const QString system = appPath + QStringLiteral("tessel.dat");
    ASSERT_TRUE(QFile::rename(system, system + QStringLiteral(".away")));
    {
        frmEditor editor(nullptr);
        editor.setDBFilePath(path);
        ModalAnswers answers;
        answers.closeAnything();
        EXPECT_TRUE(editor.Form_Load());
        ASSERT_EQ(answers.seen().size(), 2);
        EXPECT_TRUE(answers.seen()[0].contains(QStringLiteral("frmEditor.GetDefDekID\r\n错误号码: 14")));
        EXPECT_TRUE(answers.seen()[1].contains(QStringLiteral("frmEditor.GetDekComboList")));
        EXPECT_EQ(editor.DekID(), QString());
        EXPECT_GT(editor.chapterPane()->tvSYB()->nodeCount(), 0);
        EXPECT_FALSE(QFile::exists(system));
    }
    QFile::rename(system + QStringLiteral(".away"), system);
}

TEST(EditorLoading, ShowsTheTreeAndNothingElseYet) {
    frmEditor editor(nullptr);
    editor.setDBFilePath(copyOfSampleLibrary(sampleLibraryName()));
    ASSERT_TRUE(editor.Form_Load());
    EXPECT_EQ(editor.windowTitle(), sampleLibraryName());
    EXPECT_FALSE(editor.DekID().isEmpty());
    const KeyedTree* tree = editor.chapterPane()->tvSYB();
    EXPECT_EQ(tree->selectedNode(), tree->firstNode());
    EXPECT_FALSE(editor.billPane()->grdBillList()->hasRows());

    const auto* tabs = editor.findChild<QTabWidget*>(QStringLiteral("tabBillDetail"));
    ASSERT_TRUE(tabs);
    QStringList pages;
    for (int i = 0; i < tabs->count(); ++i)
        pages << tabs->tabText(i);
    EXPECT_EQ(pages, QStringList({QStringLiteral("工作内容"), QStringLiteral("项目特征"), QStringLiteral("计算规则"),
                                  QStringLiteral("工程内容")}));
    EXPECT_EQ(tabs->currentIndex(), 0);
}
