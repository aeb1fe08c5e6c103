// tessel.dat and the ration libraries are missing, empty, foreign, locked, or change while the program runs: the
// library can be worked in all the same, and what does not work is said.

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/SystemDatabase.h"
#include "tests/environment/KeptFile.h"
#include "tests/environment/OtherProgram.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Disturbance.h"
#include "tests/gui/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/ModalAnswers.h"

namespace {

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

class RationFiles : public Workplace {
protected:
    RationFiles() : Workplace(awkwardLibrary()) {}

    /// Types a ration's code into the first ration of the bill.
    QStringList typeCode(const char* code) {
        return messagesOf([this, code] {
            QWidget* editor = user.openEditor(user.contents(), 2, QStringLiteral("cont"));
            EditorDriver::typeOver(editor, QString::fromLatin1(code));
            user.key(editor, Qt::Key_Return);
            user.contents()->cancelEdit();
        });
    }

    QStringList chooseFirst(frmDekBrowser& browser) {
        return messagesOf([&] { browser.setDekID(QStringLiteral("GD2018ZHDE01")); });
    }

    const QString system = appPath + QStringLiteral("tessel.dat");
    const QString region = dataPath + QStringLiteral("广东省");
};

const QString unknownFile = QStringLiteral("提示: 定额库文件不存在!");

}  // namespace

TEST_F(RationFiles, WithoutAUsableSystemDatabaseTheLibraryWorksAllTheSame) {
    const KeptFile kept(system);
    struct State {
        const char* name;
        std::function<void()> make;
        int number;
    };
    const State states[] = {
        {"missing", [] {}, 14},
        {"empty", [this] { write(system, {}); }, 1},
        {"short", [this] { write(system, "SQLite"); }, 26},
        {"foreign", [this] { write(system, QByteArray(9000, 'x')); }, 26},
        {"another key", [this] { OtherProgram(system, "123456").run("CREATE TABLE SysBaseData(DekId)"); }, 26},
        {"other tables", [this] { OtherProgram(system, systemKey).run("CREATE TABLE other(a)"); }, 1},
        {"a folder", [this] { QDir().mkdir(system); }, 14},
    };
    int number = 0;
    for (const State& state : states) {
        if (number++ % extent(3, 1) != 0)
            continue;
        SCOPED_TRACE(state.name);
        QFile::remove(system);
        state.make();
        const auto error = [&](const char* place) {
            return QStringList{QString::fromLatin1(place) + QLatin1Char(' ') + QString::number(state.number)};
        };
        EXPECT_EQ(messagesOf([this] { reopen(); }),
                  error("frmEditor.GetDefDekID") + error("frmEditor.GetDekComboList"));
        EXPECT_EQ(messagesOf([this] { click("010101"); }), QStringList());
        EXPECT_EQ(typeCode("a1-3"), error("frmEditor.GetDekFilePath") << unknownFile);
        frmDekBrowser browser(user.window());
        EXPECT_EQ(messagesOf([&] { browser.show(); }), error("frmDekBrowser.LoadDekCom2boList"));
        EXPECT_EQ(browser.cboDek()->count(), 0);
        browser.hide();
        expectThatWorkGoesOn();
        QDir().rmdir(system);
    }
    QFile::remove(system);
    EXPECT_FALSE(QFile::exists(system)) << "it is never made";
}

TEST_F(RationFiles, ReplacedWhileTheProgramRunsAreReadAnew) {
    const QString file = QStringLiteral("other.db");
    EXPECT_EQ(typeCode("a1-3"), QStringList());
    const KeptFile kept(system);
    QFile::remove(joinPath(region, file));
    OtherProgram(system, systemKey)
        .run(
            "CREATE TABLE SysBaseData AS SELECT 'GD2018ZHDE01' AS DekId,'别的定额' AS DekName,'other.db' AS "
            "DekFilename,'广东省' AS rgnName,'01' AS Prof,'' AS QdkFileName");
    EXPECT_EQ(typeCode("a1-1"),
              QStringList{QStringLiteral("提示: 定额库") + joinPath(region, file) + QStringLiteral("文件不存在!")});
    {
        OtherProgram library(joinPath(region, file));
        library.run("CREATE TABLE DEB AS SELECT 1 AS ID,1 AS sybID,'Z9' AS DEH,'新定额' AS MC,'t' AS DW");
        library.run(
            "CREATE TABLE DeSYB AS SELECT 1 AS sybID,1 AS CH,0 AS ZH,0 AS JH,0 AS XH,0 AS MH,'章' AS BTM,0 AS isdel");
    }
    EXPECT_EQ(typeCode("z9"), QStringList());
    EXPECT_EQ(user.contents()->text(2, QStringLiteral("cont")), QStringLiteral("[Z9] 新定额"));
    expectWindowIsFile();
    QFile::remove(joinPath(region, file));
}

TEST_F(RationFiles, MissingLockedOrReplacedOnesAreSaid) {
    frmDekBrowser browser(user.window());
    browser.show();
    ASSERT_GT(browser.cboDek()->count(), 0);
    EXPECT_EQ(chooseFirst(browser), QStringList());
    const auto* tree = browser.tvRationContent();
    ASSERT_GT(tree->nodeCount(), 1);
    const QString path =
        OtherProgram(system, systemKey).run("SELECT DekFilename FROM SysBaseData WHERE DekId='GD2018ZHDE01'").value(0);
    const QString library = joinPath(region, path);
    const auto clickAChapter = [&] {
        return messagesOf([&] {
            for (KeyedTree::Node* node : tree->nodes())
                QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
        });
    };
    EXPECT_EQ(clickAChapter(), QStringList());
    {
        // Replaced while it is shown: what is open stays readable, the next choice finds the other one.
        const KeptFile kept(library);
        EXPECT_EQ(clickAChapter(), QStringList());
        EXPECT_EQ(chooseFirst(browser),
                  QStringList{QStringLiteral("提示: ") + library + QStringLiteral(" 文件不存在!")});
        EXPECT_EQ(tree->nodeCount(), 0);
        EXPECT_EQ(typeCode("a1-3").size(), 1);
        write(library, QByteArray(9000, 'x'));
        EXPECT_EQ(chooseFirst(browser),
                  QStringList{QStringLiteral("提示: ") + library + QStringLiteral(" 文件已损坏!")});
        EXPECT_EQ(typeCode("a1-3"), (QStringList{QStringLiteral("frmEditor.GetDeData 26"),
                                                 QStringLiteral("提示: 定额 [A1-3] 不存在, 请重新输入!")}));
    }
    {
        const Disturbance other(library, Disturbance::Kind::Locked);
        EXPECT_EQ(typeCode("a1-3"), (QStringList{QStringLiteral("frmEditor.GetDeData 5"),
                                                 QStringLiteral("提示: 定额 [A1-3] 不存在, 请重新输入!")}));
    }
    {
        ASSERT_TRUE(QDir().rename(region, region + QStringLiteral(".aside")));
        EXPECT_EQ(chooseFirst(browser),
                  QStringList{QStringLiteral("提示: ") + library + QStringLiteral(" 文件不存在!")});
        EXPECT_EQ(typeCode("a1-3"),
                  QStringList{QStringLiteral("提示: 定额库") + library + QStringLiteral("文件不存在!")});
        ASSERT_TRUE(QDir().rename(region + QStringLiteral(".aside"), region));
    }
    EXPECT_EQ(chooseFirst(browser), QStringList());
    EXPECT_GT(tree->nodeCount(), 1);
    browser.hide();
    EXPECT_EQ(typeCode("a1-3"), QStringList());
    expectThatWorkGoesOn();
}
