// Every hostile text in every place where a text can be typed, and in whatever libraries, ration libraries and
// tessel.dat bring along. One that breaks its statement is refused: an error is told and nothing in the file changes.
// Any other is stored and shown as it is, and changes nothing else.

#include <QComboBox>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStyledItemDelegate>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "ration_browser/frmDekBrowser.h"
#include "samples/writer/RationFiles.h"
#include "storage/SystemDatabase.h"
#include "tests/faults/HostileTexts.h"
#include "tests/faults/Workplace.h"
#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"

namespace {

QString hex(const QString& text) { return QString::fromLatin1(text.toUtf8().toHex().toUpper()); }

/// Replaces what a box holds by `text`, at once, as an input method or the clipboard gives it.
void enterAtOnce(QWidget* box, const QString& text) {
    ASSERT_TRUE(box);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(box, &event);
}

/// As much as a limit lets in, without half a character at the end, then without the blanks around it.
QString cut(QString text, int limit) {
    if (limit > 0)
        text = text.left(limit);
    if (!text.isEmpty() && text.back().isHighSurrogate())
        text.chop(1);
    static const QRegularExpression around(u"^ +| +$"_s);
    return text.remove(around);
}

/// How much text a view lays out for a cell.
qsizetype laidOut(const QAbstractItemView* view, const QModelIndex& index) {
    struct Open : QStyledItemDelegate {
        using QStyledItemDelegate::initStyleOption;
    };
    QStyleOptionViewItem option;
    const auto* delegate = qobject_cast<const QStyledItemDelegate*>(view->itemDelegateForIndex(index));
    (delegate->*&Open::initStyleOption)(&option, index);
    return option.text.size();
}

struct Place {
    const char* name;
    std::function<void(ModalAnswers&, const QString&)> type;
    SqlText stored;  ///< gives the bytes that the file has, in hexadecimal
    std::function<QString()> shown;
    std::function<QString(const HostileText&)> expected;
    int rows = 1;  ///< that change with the text
};

class HostileTextTest : public Workplace {
protected:
    HostileTextTest() : Workplace(awkwardLibrary()) {}

    void typeInCell(KeyedGrid* grid, int row, const QString& key, const QString& text) {
        QWidget* box = user.openEditor(grid, row, key);
        enterAtOnce(box, text);
        user.key(box, Qt::Key_Return);
        // What is refused may stay open.
        grid->cancelEdit();
    }

    Place cell(KeyedGrid* grid, const char* key, const char* field, const QString& of, int limit, int row = 0,
               int rows = 1) {
        return {key, [=, this](ModalAnswers&, const QString& text) { typeInCell(grid, row, QLatin1String(key), text); },
                sql("SELECT DISTINCT hex(", QLatin1String(field), ") FROM ", of),
                [=] { return grid->text(row, QLatin1String(key)); },
                // Values alone keep the blanks around them.
                [=](const HostileText& text) { return rows == 4 ? text.cell : cut(text.cell, limit); }, rows};
    }
    Place box(QPlainTextEdit* box, const char* field, const QString& of) {
        return {field,
                [=, this](ModalAnswers&, const QString& text) {
                    user.typeInto(box, QString());
                    enterAtOnce(box, text);
                    user.key(box, Qt::Key_Tab);
                },
                sql("SELECT hex(", QLatin1String(field), ") FROM ", of),
                [=] { return box->document()->toRawText().replace(QChar::ParagraphSeparator, u"\r\n"_s); },
                [](const HostileText& text) { return text.box; }};
    }
    Place chapter(int command, const SqlText& inFile) {
        return {"chapter",
                [=, this](ModalAnswers& answers, const QString& text) {
                    click(command == 102 ? "010101" : "05");
                    answers.then([text](QWidget* dialog) {
                        auto* box = dialog->findChild<QLineEdit*>(u"txtContent"_s);
                        enterAtOnce(box, text);
                        QTest::keyClick(box, Qt::Key_Return);
                    });
                    user.run(1, command);
                },
                inFile,
                [this] { return user.tree()->selectedNode()->text(0).section(u' ', 1); },
                [](const HostileText& text) { return cut(text.held, 0); },
                2};
    }
    void tryAt(const Place& place, const HostileText& text);

    int stored = 0;
    int refused = 0;
};

void HostileTextTest::tryAt(const Place& place, const HostileText& text) {
    SCOPED_TRACE(testing::Message() << place.name << ": " << qPrintable(text.typed.left(60)));
    const QStringList before = contentOf(user.path());
    const QString expected = place.expected(text);
    const QStringList said = messagesOf([&](ModalAnswers& answers) { place.type(answers, text.typed); });
    QStringList after = contentOf(user.path());
    if (isRefused(expected)) {
        ++refused;
        EXPECT_EQ(said.filter(QRegularExpression(u"^\\w+\\.\\w* 1$"_s)).size(), 1) << qPrintable(said.join(u'\n'));
        EXPECT_EQ(after, before);
        return;
    }
    ++stored;
    EXPECT_EQ(said, QStringList());
    EXPECT_EQ(rowsInFile(user.path(), place.stored), QStringList{hex(expected)});
    EXPECT_TRUE(place.shown() == expected) << qPrintable(hex(place.shown()));
    for (const QString& row : before)
        after.removeOne(row);
    EXPECT_LE(after.size(), place.rows);
}

}  // namespace

TEST_F(HostileTextTest, IsStoredAsTypedOrRefusedWithoutATrace) {
    const QString bill = u"tblBill WHERE ID="_s + user.bills()->text(0, u"id"_s);
    const QString feature = u"tblBillSpec WHERE ID="_s + user.features()->text(0, u"id"_s);
    const QString content = user.contents()->text(0, u"contID"_s);
    const Place places[] = {
        cell(user.bills(), "CodePreFix", "CodePrefix", bill, 8),
        cell(user.bills(), "Name", "Name", bill, 50),
        cell(user.bills(), "Unit", "Unit", bill, 12),
        box(user.rule(), "Rule", bill),
        box(user.content(), "Cont", bill),
        cell(user.features(), "Name", "Name", feature, 0),
        cell(user.features(), "unit", "Unit", feature, 0),
        cell(user.features(), "defval", "DefVal", feature, 0),
        cell(user.contents(), "cont", "Cont", u"tblCont WHERE ID="_s + content, 50),
        cell(user.contents(), "cont", "SubCont", u"tblContDe WHERE SubNum=1 AND ContID="_s + content, 50, 1, 2),
        cell(user.values(), "eigenValue", "EigenValue", u"tblSpecEnum WHERE ID="_s + user.values()->text(0, u"ID"_s), 0,
             0, 4),
        chapter(102, "SELECT hex(Name) FROM tblSYB WHERE Code='010101'"),
        // Its number in sqlite_sequence changes too.
        chapter(101, "SELECT hex(Name) FROM tblSYB ORDER BY ID DESC LIMIT 1"),
    };
    for (const Place& place : places) {
        click("010101");
        for (const HostileText& text : hostileTexts)
            tryAt(place, text);
        if (&place < std::end(places) - 2)
            expectWindowIsFile();
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_EQ(integrityOf(user.path()), u"ok"_s);
    counted(u"hostile texts stored"_s, stored);
    counted(u"hostile texts refused"_s, refused);
}

TEST_F(HostileTextTest, IsOnlyLookedForInTheQueryAndAsARation) {
    const QStringList before = contentOf(user.path());
    OtherProgram other(user.path());
    for (const HostileText& text : hostileTexts) {
        SCOPED_TRACE(qPrintable(text.typed.left(60)));
        const QString code = cut(text.cell, 150).toUpper();
        QStringList said = messagesOf([&] { typeInCell(user.contents(), 2, u"cont"_s, text.typed); });
        EXPECT_TRUE(!isRefused(code) || said.takeFirst() == u"frmEditor.GetDeData 1"_s);
        EXPECT_TRUE(said == QStringList{u"提示: 定额 ["_s + code + u"] 不存在, 请重新输入!"_s});
        const bool unreadable = text.typed.contains(QChar::Null);
        const auto found = other.run("SELECT ID FROM tblBill WHERE Code LIKE '%' || ? || '%'", {text.typed}).size();
        enterAtOnce(user.search(), text.typed);
        EXPECT_EQ(messagesOf([this] { user.key(user.search(), Qt::Key_Return); }).size(), unreadable ? 1 : 0);
        EXPECT_TRUE(unreadable || user.bills()->rowCount() == found);
        click("010101");
    }
    EXPECT_EQ(contentOf(user.path()), before);
}

TEST_F(HostileTextTest, ThatIsInTheLibraryIsShownAsItIsAndLeadsNoCommandAstray) {
    user.close();
    const auto count = static_cast<int>(hostileTexts.size());
    const QStringList codes = u"0'¦&<¦0\"¦01';¦01; ¦&<b>¦0'--¦01';--¦0101''¦0101'1¦01; --¦&<b>#1"_s.split(u'¦');
    {
        OtherProgram other(user.path());
        other.run("BEGIN");
        for (int i = 0; i < codes.size(); ++i)
            other.run("INSERT INTO tblSYB(Code,Name) VALUES(?,?)",
                      {codes[i], hostileTexts[static_cast<unsigned>(i)].typed});
        other.run("DELETE FROM tblBill WHERE Code LIKE '010102%'");
        for (int i = 0; i < count; ++i) {
            const QString& text = hostileTexts[static_cast<unsigned>(i)].typed;
            other.run("INSERT INTO tblBill(Code,Name,Unit,Rule) VALUES(?1,?2,?2,?2)",
                      {u"010102"_s + zeroPadded(i + 1, 3), text});
            const QString bill = QString::number(other.lastId());
            other.run("INSERT INTO tblBillSpec(BillID,Name,Type,DefVal) VALUES(?1,?2,2,?2)", {bill, text});
            other.run("INSERT INTO tblSpecEnum(SpecID,IsUse,EigenValue) VALUES(last_insert_rowid(),1,?)", {text});
            other.run("INSERT INTO tblCont(Num,Cont,Prof,BillID) VALUES(1,?2,'01',?1)", {bill, text});
            other.run(
                "INSERT INTO tblContDe(ContID,SubNum,SubCont,Deh,Name,DekID) VALUES(last_insert_rowid(),1,?1,?1,?1,?1)",
                {text});
        }
        other.run("COMMIT");
    }
    const auto canary = [&] {
        return rowsInFile(user.path(), "SELECT * FROM tblBill WHERE Code LIKE '070101%'") +
               rowsInFile(user.path(), "SELECT * FROM sqlite_schema");
    };
    const QStringList untouched = canary();
    reopen("010102");
    ASSERT_EQ(user.bills()->rowCount(), count);
    for (int row = 0; row < count; ++row) {
        SCOPED_TRACE(row);
        const QString whole = QString::fromUtf8(hostileTexts[static_cast<unsigned>(row)].typed.toUtf8());
        user.click(user.bills(), row, u"Name"_s);
        EXPECT_TRUE(user.bills()->text(row, u"Name"_s) == whole && user.features()->text(0, u"Name"_s) == whole);
        EXPECT_TRUE(user.values()->text(0, u"eigenValue"_s) == whole && user.contents()->text(0, u"cont"_s) == whole);
        QTreeWidgetItem* node = user.tree()->selectedNode();
        node->setText(0, QString(400, u'x') + whole);
        QHelpEvent hover(QEvent::ToolTip, user.tree()->visualItemRect(node).center(), QPoint(10, 10));
        QCoreApplication::sendEvent(user.tree()->viewport(), &hover);
        const QString shown = QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
        EXPECT_LE(shown.size(), 2000);
        for (const char* literal : {"<b>", "&#39;", "%1", "&File", "<img"})
            EXPECT_EQ(shown.contains(QLatin1String(literal)), whole.contains(QLatin1String(literal)));
    }
    for (int row = 0; row < count; ++row) {
        SCOPED_TRACE(row);
        user.bills()->setRow(row);
        // A command is done or tells its failure and leaves no trace; what has no part of the text in it is done.
        for (const auto& [host, id, survives] : {std::tuple(2, 105, true),
                                                 {3, 300, true},
                                                 {4, 300, true},
                                                 {2, 402, true},
                                                 {2, 400, false},
                                                 {2, 403, false}}) {
            const QStringList before = contentOf(user.path());
            const QStringList said = messagesOf([&, host = host, id = id] { user.run(host, id); });
            EXPECT_TRUE(said.isEmpty() || !survives || contentOf(user.path()) == before) << id;
        }
        ASSERT_EQ(canary(), untouched);
    }
    // The deepest first: a chapter below one that is gone is not shown.
    for (qsizetype i = codes.size() - 1; i >= 0; --i) {
        for (const int command : {102, 105, 104, 101, 103}) {
            KeyedTree::Node* node = user.tree()->node(u'K' + codes[i]);
            if (!node)
                break;
            messagesOf([&] { user.click(node), user.run(1, command); });
            ASSERT_EQ(canary(), untouched) << qPrintable(codes[i]) << ' ' << command;
        }
    }
    EXPECT_EQ(integrityOf(user.path()), u"ok"_s);
    messagesOf([this] { user.close(); });
}

TEST_F(HostileTextTest, ThatIsHugeIsShownInPartAndKeptWhole) {
    const QString lines = (QString(99, u'长') + u'\n').repeated(3'000);
    const QString line(30'000, u'行');
    const QString name(40'000, u'名');
    const QString read = u"SELECT Name,Rule,Cont FROM tblBill WHERE Code='010101001'"_s;
    const Rows held{{name, lines, line}};
    OtherProgram(user.path()).rows(u"UPDATE tblBill SET Name=?1, Rule=?2, Cont=?3 WHERE Code='010101001'"_s, held[0]);
    click("010101");
    EXPECT_EQ(user.rule()->document()->characterCount() - 1, 200'000);
    EXPECT_EQ(user.content()->document()->characterCount() - 1, 20'000);
    EXPECT_TRUE(user.rule()->isReadOnly() && user.content()->isReadOnly());
    const QModelIndex cell = user.bills()->model()->index(0, user.bills()->column(u"Name"_s));
    user.tree()->selectedNode()->setText(0, name);
    EXPECT_LE(laidOut(user.bills(), cell), 2000);
    EXPECT_LE(laidOut(user.tree(), user.tree()->currentIndex()), 2000);
    EXPECT_TRUE(user.bills()->text(0, u"Name"_s) == name);
    EXPECT_FALSE(user.edit(user.bills(), 0, u"Name"_s, u"x"_s));
    for (QPlainTextEdit* box : {user.rule(), user.content()}) {
        user.typeInto(box, u"x"_s);
        user.key(box, Qt::Key_Tab);
    }
    EXPECT_TRUE(OtherProgram(user.path()).rows(read) == held);
    EXPECT_EQ(messagesOf([this] { user.run(2, 201); }), QStringList());  // its question holds the name
}

TEST_F(HostileTextTest, OfRationLibrariesAndTheirListIsDataToo) {
    const QString list = appPath + u"tessel.dat"_s;
    const KeptFile kept(list);
    const QString path = joinPath(dataPath + u"广东省"_s, u"hostile.db"_s);
    QFile::remove(path);
    writeSystemDatabase(list, {{u"HOSTILE"_s, u"x"_s, u"hostile.db"_s, u"广东省"_s, u"0"_s}});
    writeRationLibrary(path, {});
    const auto count = static_cast<int>(hostileTexts.size());
    {
        OtherProgram system(list, systemKey);
        OtherProgram library(path);
        library.run("INSERT INTO DeSYB VALUES(1,1,0,0,0,0,'<b>&File',0)");
        library.run("BEGIN");
        system.run("BEGIN");
        for (const HostileText& text : hostileTexts) {
            system.run("INSERT INTO SysBaseData VALUES(?1,?1,?1,?1,?1,'1')", {text.typed});
            library.run("INSERT INTO DEB(sybID,DEH,MC,DW) VALUES(1,?1,?1,?1)", {text.typed});
        }
        system.run("COMMIT");
        library.run("COMMIT");
    }
    EXPECT_EQ(messagesOf([this] { reopen(); }), QStringList());
    user.contents()->setCell(2, u"cont"_s);
    const QString id = user.contents()->text(2, u"contDeID"_s);
    frmDekBrowser browser(&main);
    browser.setParetnForm(user.editor());
    browser.show();
    ASSERT_EQ(browser.cboDek()->count(), count + 1);
    // Every library that is listed can be chosen; none is there but the first.
    for (int entry = 1; entry <= count; ++entry) {
        EXPECT_LE(browser.cboDek()->itemText(entry).size(), 2000);
        EXPECT_EQ(messagesOf([&] { browser.setDekID(browser.cboDek()->itemData(entry).toString()); }).size(), 1)
            << entry;
    }
    browser.setDekID(u"HOSTILE"_s);
    const KeyedTree* tree = browser.tvRationContent();
    ASSERT_TRUE(tree->node(u"K1"_s));
    EXPECT_EQ(tree->node(u"K1"_s)->text(0), u"1.<b>&File"_s);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(tree->node(u"K1"_s)).center());
    ASSERT_EQ(browser.grdDEB()->rowCount(), count);
    for (int row = 0; row < count; ++row) {
        SCOPED_TRACE(row);
        browser.grdDEB()->setRow(row);
        user.contents()->setRow(2);
        const QString code = browser.grdDEB()->text(row, u"DEH"_s);
        const QStringList before = contentOf(user.path());
        const QStringList said = messagesOf([&] { browser.CommandBars1()->execute(260); });
        const QString in = hex(code);
        const QStringList now =
            rowsInFile(user.path(), sql("SELECT hex(Deh)||hex(Name)||hex(Unit)||DekID FROM tblContDe WHERE ID=", id));
        EXPECT_EQ(said.isEmpty(), !isRefused(code));
        EXPECT_TRUE(isRefused(code) ? contentOf(user.path()) == before
                                    : now == QStringList{in + in + in + u"HOSTILE"_s});
    }
    browser.hide();
    QFile::remove(path);
}
