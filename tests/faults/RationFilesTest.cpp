// tessel.dat and the ration libraries are missing, empty, foreign, locked, or change while the program runs: the
// library can be worked in all the same, and what does not work is said.

#include "administration/RationFiles.h"
#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/SystemDatabase.h"
#include "tests/faults/Workplace.h"

namespace {

class RationFiles : public Workplace {
protected:
    const QString system = appPath + u"tessel.dat"_s;
    const QString code = u"a1-3"_s;
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
             writeSystemDatabase(system, {});
             other = std::make_unique<OtherProgram>(system, systemKey);
             other->run("BEGIN EXCLUSIVE");
         },
         5},
    };
    for (const auto& state : states) {
        SCOPED_TRACE(state.name);
        state.make();
        const bool made = QFile::exists(system);
        const QString number = u" %1"_s.arg(state.number);
        EXPECT_EQ(messagesOf([this] { reopen(); }),
                  QStringList({u"frmEditor.GetDefDekID"_s + number, u"frmEditor.GetDekComboList"_s + number}));
        EXPECT_EQ(typeCode(code), QStringList({u"frmEditor.GetDekFilePath"_s + number, u"提示: 定额库文件不存在!"_s}));
        frmDekBrowser browser(&main);
        EXPECT_EQ(messagesOf([&] { browser.show(); }), QStringList{u"frmDekBrowser.LoadDekCom2boList"_s + number});
        EXPECT_EQ(browser.cboDek()->count(), 0);
        browser.hide();
        expectThatWorkGoesOn();
        other.reset();
        EXPECT_EQ(QFile::exists(system), made) << "it is never made";
        QFile::remove(system) || QDir().rmdir(system);
    }
}

TEST_F(RationFiles, MissingLockedOrReplacedWhileTheProgramRunsAreSaidAndReadAnew) {
    const QString region = dataPath + u"广东省"_s;
    const QString library = joinPath(
        region,
        OtherProgram(system, systemKey).run("SELECT DekFilename FROM SysBaseData WHERE DekId='GD2018ZHDE01'").value(0));
    const QString unknownCode = u"提示: 定额 [A1-3] 不存在, 请重新输入!"_s;
    frmDekBrowser browser(&main);
    browser.show();
    KeyedTree* tree = browser.tvRationContent();
    const auto choose = [&] { return messagesOf([&] { browser.setDekID(u"GD2018ZHDE01"_s); }); };
    const QStringList missing{u"提示: "_s + library + u" 文件不存在!"_s};
    EXPECT_EQ(choose() + typeCode(code), QStringList());
    ASSERT_GT(tree->nodeCount(), 1);
    {
        // What is open stays readable, the next choice finds the other one.
        const KeptFile kept(library);
        EXPECT_EQ(messagesOf([&] {
                      for (KeyedTree::Node* node : tree->nodes())
                          EditorDriver::click(tree, node);
                  }),
                  QStringList());
        EXPECT_EQ(choose(), missing);
        EXPECT_EQ(tree->nodeCount(), 0);
        EXPECT_EQ(typeCode(code), QStringList{u"提示: 定额库"_s + library + u"文件不存在!"_s});
        overwrite(library, QByteArray(9000, 'x'));
        EXPECT_EQ(choose(), QStringList{u"提示: "_s + library + u" 文件已损坏!"_s});
        EXPECT_EQ(typeCode(code), QStringList({u"frmEditor.GetDeData 26"_s, unknownCode}));
        // Another list, and a library in the place of the old one.
        const KeptFile list(system);
        writeSystemDatabase(system, {{u"GD2018ZHDE01"_s, u"别的定额"_s, QFileInfo(library).fileName(), u"广东省"_s}});
        writeRationLibrary(library, {{}, {{1, u"Z9"_s, u"新定额"_s, u"t"_s}}});
        EXPECT_EQ(typeCode(u"z9"_s), QStringList());
        EXPECT_EQ(user.contents()->text(2, u"cont"_s), u"[Z9] 新定额"_s);
        expectWindowIsFile();
    }
    {
        const Disturbance other(library, Disturbance::Kind::Locked);
        EXPECT_EQ(typeCode(code), QStringList({u"frmEditor.GetDeData 5"_s, unknownCode}));
    }
    ASSERT_TRUE(QDir().rename(region, region + u".aside"_s));
    EXPECT_EQ(choose(), missing);
    ASSERT_TRUE(QDir().rename(region + u".aside"_s, region));
    EXPECT_EQ(choose() + typeCode(code), QStringList());
    EXPECT_GT(tree->nodeCount(), 1);
    browser.hide();
    expectThatWorkGoesOn();
}
