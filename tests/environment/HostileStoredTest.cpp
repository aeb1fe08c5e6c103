// Hostile texts that were not typed here: in a library that another program wrote, in ration libraries and in
// tessel.dat. They are shown as they are; a command that puts one into a statement fails without a trace or does what
// it says; nothing else in the file changes.

#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "editor/chapters/ChapterPane.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/SystemDatabase.h"
#include "tests/environment/HostileTexts.h"
#include "tests/environment/KeptFile.h"
#include "tests/environment/OtherProgram.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

/// Codes that a library may hold although no command makes them. None is a pattern (%, _): the statements that find
/// what belongs to a chapter by its code would find that of others too.
const char* const chapterCodes[] = {"0'",   "&<",     "0\"",    "01';",   "01; ",   "&<b>",
                                    "0'--", "01';--", "0101''", "0101'1", "01; --", "&<b>#1"};
const char* const billCodes[] = {"010101';-", "010101_%'", "010101\"\"\"", "010101%%%", "010101___", "010101;--"};

/// What a library holds that nobody touches.
QStringList untouched(const QString& path) {
    return rowsInFile(path, "SELECT * FROM tblBill WHERE Code LIKE '070101%'") +
           rowsInFile(path, "SELECT * FROM tblCont WHERE Code LIKE '070101%'") +
           rowsInFile(path, "SELECT * FROM sqlite_schema");
}

/// A library whose every text is hostile.
QString hostileLibrary() {
    const QString path = awkwardLibrary();
    OtherProgram other(path);
    other.run("BEGIN");
    const QStringList& texts = hostileTexts();
    const auto text = [&](int number) { return texts[number % texts.size()]; };
    int number = 0;
    for (const char* code : chapterCodes)
        other.run("INSERT INTO tblSYB(Code,Name,IsDel) VALUES(?,?,0)", {QString::fromLatin1(code), text(number++)});
    other.run("DELETE FROM tblBill WHERE Code LIKE '010102%'");
    for (int bill = 0; bill < texts.size() + static_cast<int>(std::size(billCodes)); ++bill) {
        const QString code = bill < texts.size() ? QStringLiteral("010102%1").arg(bill + 1, 3, 10, QLatin1Char('0'))
                                                 : QString::fromLatin1(billCodes[bill - texts.size()]);
        other.run("INSERT INTO tblBill(Code,CodePrefix,Name,Unit,Rule,Cont) VALUES(?,?,?,?,?,?)",
                  {code, text(bill + 1), text(bill), text(bill + 2), text(bill + 3), text(bill + 4)});
        const QString id = other.run("SELECT last_insert_rowid()").value(0);
        other.run("INSERT INTO tblBillSpec(BillID,Name,Type,Unit,DefVal) VALUES(?,?,2,?,?)",
                  {id, text(bill), text(bill + 1), text(bill + 2)});
        other.run("INSERT INTO tblSpecEnum(SpecID,IsUse,EigenValue) VALUES(last_insert_rowid(),1,?)", {text(bill)});
        other.run("INSERT INTO tblCont(Code,Num,Cont,Prof,BillID) VALUES(?,1,?,'01',?)", {code, text(bill), id});
        const QString content = other.run("SELECT last_insert_rowid()").value(0);
        other.run("INSERT INTO tblContDe(ContID,SubNum,SubCont,Deh,Name,Unit,DekID) VALUES(?,1,?,?,?,?,?)",
                  {content, text(bill), text(bill + 1), text(bill + 2), text(bill + 3), text(bill + 4)});
    }
    other.run("COMMIT");
    return path;
}

void clickChapter(frmDekBrowser& browser) {
    const KeyedTree* tree = browser.tvRationContent();
    auto* node = tree->node(QStringLiteral("K1"));
    ASSERT_TRUE(node);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
}

class HostileStored : public Workplace {
protected:
    HostileStored() : Workplace(hostileLibrary()) {}

    /// Runs a command; unless a part of its work stays by its nature, a recorded error means that nothing changed.
    void run(int host, int command, bool partsStay = false) {
        SCOPED_TRACE(testing::Message() << "command " << host << '.' << command);
        const QStringList before = contentOf(user.path());
        const QStringList said = messagesOf([&](ModalAnswers& answers) {
            answers.otherwise([](QWidget* window) { answer(window); });
            user.run(host, command);
        });
        ++commands;
        const bool failed =
            !said.filter(QRegularExpression(QStringLiteral("^(?!frmEditor.LoadBill )\\w+\\.\\w* \\d+$"))).isEmpty();
        failures += failed ? 1 : 0;
        EXPECT_TRUE(!failed || partsStay || contentOf(user.path()) == before);
        EXPECT_EQ(untouched(user.path()), canary);
    }

    /// Every box shows its text as it is; Yes to questions, a name to the name dialog.
    static void answer(QWidget* window) {
        if (auto* box = qobject_cast<QMessageBox*>(window)) {
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            QAbstractButton* yes = box->button(QMessageBox::Yes);
            QTest::mouseClick(yes ? yes : box->button(QMessageBox::Ok), Qt::LeftButton);
        } else if (auto* name = window->findChild<QLineEdit*>(QStringLiteral("txtContent"))) {
            EditorDriver::typeOver(name, QStringLiteral("neu"));
            QTest::keyClick(name, Qt::Key_Return);
        } else {
            window->close();
        }
    }

    const QStringList canary = untouched(user.path());
    int commands = 0;
    int failures = 0;
};

}  // namespace

TEST_F(HostileStored, IsShownAsItIs) {
    click("010102");
    const QStringList& texts = hostileTexts();
    ASSERT_EQ(user.bills()->rowCount(), texts.size());
    for (int row = 0; row < texts.size(); ++row) {
        SCOPED_TRACE(qPrintable(texts[row].left(60)));
        const QString& text = texts[row];
        const QString whole = QString::fromUtf8(text.toUtf8());
        user.click(user.bills(), row, QStringLiteral("Name"));
        EXPECT_TRUE(user.bills()->text(row, QStringLiteral("Name")) == whole);
        EXPECT_TRUE(user.features()->text(0, QStringLiteral("Name")) == whole);
        EXPECT_TRUE(user.values()->text(0, QStringLiteral("eigenValue")) == whole);
        EXPECT_TRUE(user.contents()->text(0, QStringLiteral("cont")) == whole);
        EXPECT_TRUE(user.contents()->text(1, QStringLiteral("cont")) == whole);

        // A question and a tool tip show it literally too.
        QString asked;
        messagesOf([&](ModalAnswers& answers) {
            answers.then([&](QWidget* window) {
                asked = qobject_cast<QMessageBox*>(window)->text();
                EXPECT_EQ(qobject_cast<QMessageBox*>(window)->textFormat(), Qt::PlainText);
                QTest::keyClick(window, Qt::Key_Escape);
            });
            user.run(2, 201);
        });
        EXPECT_TRUE(asked.contains(whole.left(1900)));
        QTreeWidgetItem* chapter = user.tree()->selectedNode();
        chapter->setText(0, QString(400, QLatin1Char('x')) + whole.left(100));
        QHelpEvent hover(QEvent::ToolTip, user.tree()->visualItemRect(chapter).center(), QPoint(10, 10));
        QCoreApplication::sendEvent(user.tree()->viewport(), &hover);
        const QString shown = QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
        for (const char* literal : {"<b>", "&#39;", "%1", "&File", "<img"})
            EXPECT_EQ(shown.contains(QLatin1String(literal)), whole.left(100).contains(QLatin1String(literal)));
    }
}

TEST_F(HostileStored, NoCommandIsLedAstray) {
    click("010102");
    const int step = extent(16, 1);
    int row = 0;
    for (; row < user.bills()->rowCount(); row += step) {
        SCOPED_TRACE(testing::Message() << "bill " << row);
        user.bills()->setRow(row);
        run(2, 105);
        user.features()->setRow(0);
        run(4, 300);
        run(3, 300);
        // Renumbering stays when what follows it is refused.
        run(2, 400, true);
        user.contents()->setRow(user.contents()->rowCount() - 1);
        run(2, 402);
        run(2, 403, true);
        EXPECT_EQ(messagesOf([this] {
                      user.edit(user.bills(), user.bills()->row(), QStringLiteral("Name"), QStringLiteral("x"));
                  }),
                  QStringList());
    }
    for (const int command : {200, 201})
        run(2, command);
    click("010101");
    for (row = 0; row < user.bills()->rowCount(); ++row) {
        user.bills()->setRow(row);
        for (const int command : {105, 104})
            run(2, command);
        run(2, 400, true);
        user.contents()->setRow(0);
        run(2, 401, true);
    }
    messagesOf([this] { reopen(); });
    // The deepest first: a chapter below one that is gone is not shown.
    for (auto code = std::rbegin(chapterCodes); code != std::rend(chapterCodes); ++code) {
        SCOPED_TRACE(*code);
        const QString text = QString::fromLatin1(*code);
        const auto select = [&] {
            KeyedTree::Node* node = user.tree()->node(QLatin1Char('K') + text);
            messagesOf([&] { user.click(node); });
            return node && user.chapter() == text;
        };
        ASSERT_TRUE(select());
        run(1, 102);
        for (const int command : {105, 104, 101, 103}) {
            ASSERT_TRUE(select());
            run(1, command, command == 103);
            messagesOf([this] { user.editor()->chapterPane()->CreateTvwSYB(); });
            if (!user.tree()->node(QLatin1Char('K') + text))
                break;
        }
    }
    EXPECT_EQ(integrityOf(user.path()), QStringLiteral("ok"));
    messagesOf([this] { reopen(); });
    reportFigures(QStringLiteral("hostile texts stored: %1 commands, %2 refused").arg(commands).arg(failures));
}

TEST_F(HostileStored, RationLibrariesAndTheirListAreDataToo) {
    const QString list = appPath + QStringLiteral("tessel.dat");
    const KeptFile kept(list);
    const QStringList& texts = hostileTexts();
    const QString file = QStringLiteral("hostile.db");
    const QString path = joinPath(dataPath + QStringLiteral("广东省"), file);
    QFile::remove(path);
    {
        OtherProgram system(list, systemKey);
        system.run("BEGIN");
        system.run("CREATE TABLE SysBaseData (DekId,DekName,DekFilename,rgnName,Prof,QdkFileName)");
        system.run(
            "INSERT INTO SysBaseData(DekId,DekName,DekFilename,rgnName,Prof) VALUES('HOSTILE','x',?,'广东省','0')",
            {file});
        for (const QString& text : texts)
            system.run(
                "INSERT INTO SysBaseData(DekId,DekName,DekFilename,rgnName,Prof,QdkFileName) VALUES(?,?,?,?,'1',?)",
                {text, text, text, text, text});
        system.run("COMMIT");
        OtherProgram library(path);
        library.run("BEGIN");
        library.run(
            "CREATE TABLE DeSYB (sybID Integer,CH Integer,ZH Integer,JH Integer,XH Integer,MH Integer,BTM text,isdel "
            "Integer)");
        library.run("CREATE TABLE DEB (ID Integer PRIMARY KEY,sybID Integer,DEH text,MC text,DW text)");
        library.run("INSERT INTO DeSYB VALUES(1,1,0,0,0,0,?,0)", {texts[0]});
        for (int i = 0; i < texts.size(); ++i)
            library.run("INSERT INTO DEB(sybID,DEH,MC,DW) VALUES(1,?,?,?)",
                        {i % 2 ? texts[i] : QStringLiteral("C%1").arg(i), texts[i], texts[(i + 5) % texts.size()]});
        library.run("COMMIT");
    }
    EXPECT_EQ(messagesOf([this] { reopen(); }), QStringList());
    click("030101");
    const auto rationRow = [this] {
        int row = 0;
        while (row < user.contents()->rowCount() && user.contents()->level(row) != 2)
            ++row;
        return row;
    };
    user.contents()->setCell(rationRow(), QStringLiteral("cont"));
    const QString id = user.contents()->text(rationRow(), QStringLiteral("contDeID"));

    frmDekBrowser browser(user.window());
    browser.setParetnForm(user.editor());
    browser.show();
    ASSERT_EQ(browser.cboDek()->count(), texts.size() + 1);
    int refused = 0;
    // Every library that is listed can be chosen; none is there but the first.
    for (int entry = 1; entry < browser.cboDek()->count(); ++entry) {
        const QString dekId = browser.cboDek()->itemData(entry).toString();
        const bool shownWhole = dekId.size() < 2000 && !dekId.contains(QLatin1Char('\n'));
        EXPECT_TRUE(!shownWhole || browser.cboDek()->itemText(entry) == dekId);
        EXPECT_EQ(messagesOf([&] { browser.setDekID(dekId); }).size(), 1) << qPrintable(dekId);
    }
    browser.setDekID(QStringLiteral("HOSTILE"));
    messagesOf([&] { clickChapter(browser); });
    ASSERT_EQ(browser.grdDEB()->rowCount(), texts.size());
    for (int row = 0; row < texts.size(); ++row) {
        SCOPED_TRACE(qPrintable(texts[row].left(60)));
        browser.grdDEB()->setRow(row);
        user.contents()->setRow(rationRow());
        const QStringList before = contentOf(user.path());
        const QString code = browser.grdDEB()->text(row, QStringLiteral("DEH"));
        const QStringList said = messagesOf([&] { browser.CommandBars1()->execute(260); });
        const QString unit = texts[(row + 5) % texts.size()];
        if (breaksStatement(code) || breaksStatement(texts[row]) || breaksStatement(unit)) {
            ++refused;
            EXPECT_FALSE(said.isEmpty());
            EXPECT_TRUE(contentOf(user.path()) == before);
            continue;
        }
        EXPECT_EQ(said, QStringList());
        const auto hex = [](const QString& text) { return QString::fromLatin1(text.toUtf8().toHex().toUpper()); };
        EXPECT_EQ(
            rowsInFile(user.path(), sql("SELECT hex(Deh),hex(Name),hex(Unit),DekID FROM tblContDe WHERE ID=", id)),
            QStringList{hex(code) + QLatin1Char('|') + hex(texts[row]) + QLatin1Char('|') + hex(unit) +
                        QStringLiteral("|HOSTILE")});
    }
    browser.hide();
    QFile::remove(path);
    reportFigures(QStringLiteral("hostile ration libraries: %1 listed, %2 rations chosen, %3 refused")
                      .arg(texts.size())
                      .arg(texts.size())
                      .arg(refused));
}
