// tessel.dat and the ration libraries are missing, empty, foreign, locked, or change while the program runs: the
// library can be worked in all the same, and what does not work is said.

#include <QComboBox>
#include <QDir>
#include <QTest>
#include <memory>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "ration_browser/frmDekBrowser.h"
#include "samples/writer/RationFiles.h"
#include "storage/SystemDatabase.h"
#include "tests/faults/Workplace.h"
#include "tests/support/Disturbance.h"
#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"

using namespace Qt::StringLiterals;

namespace {

class RationFiles : public Workplace {
protected:
    RationFiles() : Workplace(awkwardLibrary()) {}

    const QString system = appPath + u"tessel.dat"_s;
    const QString region = dataPath + u"广东省"_s;
    const QString code = u"a1-3"_s;
    const QString unknownCode = u"提示: 定额 [A1-3] 不存在, 请重新输入!"_s;
};

}  // namespace

TEST_F(RationFiles, WithoutAUsableSystemDatabaseTheLibraryWorksAllTheSame) {
    const KeptFile kept(system);
    std::unique_ptr<OtherProgram> other;
    const struct {
        const char* name;
        std::function<void()> make;
        int number;
    } states[] = {
        {"missing", [] {}, 14},
        {"empty", [this] { overwrite(system, {}); }, 1},
        {"short", [this] { overwrite(system, "SQLite"); }, 26},
        {"foreign", [this] { overwrite(system, QByteArray(9000, 'x')); }, 26},
        {"another key", [this] { OtherProgram(system, "123456").run("CREATE TABLE SysBaseData(DekId)"); }, 26},
        {"other tables", [this] { OtherProgram(system, systemKey).run("CREATE TABLE other(a)"); }, 1},
        {"a folder", [this] { QDir().mkdir(system); }, 14},
        {"locked",
         [&] {
             other = std::make_unique<OtherProgram>(system, systemKey);
             other->run("CREATE TABLE SysBaseData(DekId)");
             other->run("BEGIN EXCLUSIVE");
         },
         5},
    };
    for (std::size_t i = 0; i < std::size(states); ++i) {
        SCOPED_TRACE(states[i].name);
        states[i].make();
        const auto error = [&](const char* place) {
            return QStringList{u"%1 %2"_s.arg(QLatin1String(place)).arg(states[i].number)};
        };
        EXPECT_EQ(messagesOf([this] { reopen(); }),
                  error("frmEditor.GetDefDekID") + error("frmEditor.GetDekComboList"));
        EXPECT_EQ(typeCode(code), error("frmEditor.GetDekFilePath") << u"提示: 定额库文件不存在!"_s);
        frmDekBrowser browser(&main);
        EXPECT_EQ(messagesOf([&] { browser.show(); }), error("frmDekBrowser.LoadDekCom2boList"));
        EXPECT_EQ(browser.cboDek()->count(), 0);
        browser.hide();
        expectThatWorkGoesOn();
        other.reset();
        EXPECT_EQ(QFile::exists(system), i > 0) << "it is never made";
        EXPECT_TRUE(i == 0 || QFile::remove(system) || QDir().rmdir(system));
    }
}

TEST_F(RationFiles, ReplacedWhileTheProgramRunsAreReadAnew) {
    const QString path = joinPath(region, u"other.db"_s);
    EXPECT_EQ(typeCode(code), QStringList());
    const KeptFile kept(system);
    QFile::remove(path);
    writeSystemDatabase(system, {{u"GD2018ZHDE01"_s, u"别的定额"_s, u"other.db"_s, u"广东省"_s}});
    EXPECT_EQ(typeCode(code), QStringList{u"提示: 定额库"_s + path + u"文件不存在!"_s});
    writeRationLibrary(path, {{}, {{1, u"Z9"_s, u"新定额"_s, u"t"_s}}});
    EXPECT_EQ(typeCode(u"z9"_s), QStringList());
    EXPECT_EQ(user.contents()->text(2, u"cont"_s), u"[Z9] 新定额"_s);
    expectWindowIsFile();
    QFile::remove(path);
}

TEST_F(RationFiles, MissingLockedOrReplacedOnesAreSaid) {
    const QString library = joinPath(
        region,
        OtherProgram(system, systemKey).run("SELECT DekFilename FROM SysBaseData WHERE DekId='GD2018ZHDE01'").value(0));
    frmDekBrowser browser(&main);
    browser.show();
    const auto* tree = browser.tvRationContent();
    const auto choose = [&] { return messagesOf([&] { browser.setDekID(u"GD2018ZHDE01"_s); }); };
    const auto clickChapters = [&] {
        return messagesOf([&] {
            for (KeyedTree::Node* node : tree->nodes())
                QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
        });
    };
    const QStringList missing{u"提示: "_s + library + u" 文件不存在!"_s};
    EXPECT_EQ(choose() + clickChapters(), QStringList());
    ASSERT_GT(tree->nodeCount(), 1);
    {
        // Replaced while it is shown: what is open stays readable, the next choice finds the other one.
        const KeptFile kept(library);
        EXPECT_EQ(clickChapters(), QStringList());
        EXPECT_EQ(choose(), missing);
        EXPECT_EQ(tree->nodeCount(), 0);
        EXPECT_EQ(typeCode(code), QStringList{u"提示: 定额库"_s + library + u"文件不存在!"_s});
        overwrite(library, QByteArray(9000, 'x'));
        EXPECT_EQ(choose(), QStringList{u"提示: "_s + library + u" 文件已损坏!"_s});
        EXPECT_EQ(typeCode(code), (QStringList{u"frmEditor.GetDeData 26"_s, unknownCode}));
    }
    {
        const Disturbance other(library, Disturbance::Kind::Locked);
        EXPECT_EQ(typeCode(code), (QStringList{u"frmEditor.GetDeData 5"_s, unknownCode}));
    }
    // The region's whole folder.
    ASSERT_TRUE(QDir().rename(region, region + u".aside"_s));
    EXPECT_EQ(choose(), missing);
    ASSERT_TRUE(QDir().rename(region + u".aside"_s, region));
    EXPECT_EQ(choose(), QStringList());
    EXPECT_GT(tree->nodeCount(), 1);
    browser.hide();
    EXPECT_EQ(typeCode(code), QStringList());
    expectThatWorkGoesOn();
}
