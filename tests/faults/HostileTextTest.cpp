// Every hostile text in every place where a text can be typed, and in whatever a library, ration libraries or
// tessel.dat bring along. One that breaks its statement is refused: an error is recorded and nothing in the file
// changes. Any other is stored and shown as it is, and changes nothing else.

#include <QComboBox>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "editor/chapters/ChapterPane.h"
#include "ration_browser/frmDekBrowser.h"
#include "samples/writer/RationFiles.h"
#include "storage/SystemDatabase.h"
#include "tests/faults/HostileTexts.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Libraries.h"
#include "tests/faults/Workplace.h"
#include "tests/support/Extent.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

QString hex(const QString& text) { return QString::fromLatin1(text.toUtf8().toHex().toUpper()); }

/// Whether a command has failed; that what it has done cannot be listed does not count.
bool isRecord(const QString& said) {
    static const QRegularExpression record(u"^(?!frmEditor.LoadBill )\\w+\\.\\w* -?\\d+$"_s);
    return record.match(said).hasMatch();
}

/// Replaces what a box holds by `text`, at once, as an input method or the clipboard gives it.
void enter(QWidget* box, const QString& text) {
    ASSERT_TRUE(box);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(box, &event);
}

// --- Texts that are typed ----------------------------------------------------------------------------------------

/// In a cell they are blanks.
const QRegularExpression lineBreak(u"\\r\\n|[\\t-\\r\\x{85}\\x{2028}\\x{2029}]"_s);

struct Place {
    const char* name;
    std::function<void(ModalAnswers&, const QString&)> type;
    /// Gives the bytes that the file has, in hexadecimal.
    SqlText stored;
    std::function<QString()> shown;
    /// Longest text that the place takes; 0 for any.
    int limit = 0;
    /// Rows that change with the text.
    int rows = 1;
    bool manyLines = false;
    bool cell = false;
    bool trimmed = true;

    /// What the place holds after `text` was put into it.
    QString taken(const QString& text) const {
        if (!manyLines) {
            const QString line = cell ? QString(text).replace(lineBreak, u" "_s) : text;
            const QString fits = wholeCharacters(limit > 0 ? line.left(limit) : line);
            return trimmed ? trimBlanks(fits) : fits;
        }
        QString lines = wholeCharacters(text);
        // The toolkit's own marks of a paragraph, two of which are no characters anywhere else.
        for (const char16_t* end : {u"\r\n", u"\r", u"\u2029", u"\uFDD0", u"\uFDD1"})
            lines.replace(QString::fromUtf16(end), u"\n"_s);
        return lines.replace(u"\n"_s, u"\r\n"_s);
    }
};

class HostileText : public Workplace {
protected:
    HostileText() : Workplace(awkwardLibrary()) {}

    void typeInCell(KeyedGrid* grid, int row, const QString& key, const QString& text) {
        QWidget* box = user.openEditor(grid, row, key);
        enter(box, text);
        user.key(box, Qt::Key_Return);
        // What is refused may stay open.
        grid->cancelEdit();
    }

    Place cell(const char* name, KeyedGrid* grid, const QString& key, const SqlText& stored, int limit, int row = 0) {
        return {name,   [=, this](ModalAnswers&, const QString& text) { typeInCell(grid, row, key, text); },
                stored, [=] { return grid->text(row, key); },
                limit,  1,
                false,  true};
    }
    Place box(const char* name, QPlainTextEdit* box, const SqlText& stored) {
        const auto type = [=, this](ModalAnswers&, const QString& text) {
            user.typeInto(box, QString());
            enter(box, text);
            user.key(box, Qt::Key_Tab);
        };
        const auto shown = [=] { return box->document()->toRawText().replace(QChar::ParagraphSeparator, u"\r\n"_s); };
        return {name, type, stored, shown, 0, 1, true};
    }
    std::vector<Place> places();
    /// Whether it is stored.
    bool tryAt(const Place& place, const QString& text);
};

std::vector<Place> HostileText::places() {
    const auto of = [](const char* column, const char* table, const QString& id) {
        return sql("SELECT DISTINCT hex(", QLatin1String(column), ") FROM ", QLatin1String(table), "=", id);
    };
    const QString bill = user.bills()->text(0, u"id"_s);
    const QString feature = user.features()->text(0, u"id"_s);
    const QString content = user.contents()->text(0, u"contID"_s);
    const char* const ofBill = "tblBill WHERE ID";
    const char* const ofFeature = "tblBillSpec WHERE ID";
    const auto renameChapter = [this](ModalAnswers& answers, const QString& text) {
        answers.then([text](QWidget* dialog) {
            auto* box = dialog->findChild<QLineEdit*>(u"txtContent"_s);
            enter(box, text);
            QTest::keyClick(box, Qt::Key_Return);
        });
        user.run(1, 102);
    };
    std::vector<Place> all{
        cell("bill, prefix", user.bills(), u"CodePreFix"_s, of("CodePrefix", ofBill, bill), 8),
        cell("bill, name", user.bills(), u"Name"_s, of("Name", ofBill, bill), 50),
        cell("bill, unit", user.bills(), u"Unit"_s, of("Unit", ofBill, bill), 12),
        box("rule", user.rule(), of("Rule", ofBill, bill)),
        box("content text", user.content(), of("Cont", ofBill, bill)),
        cell("feature, name", user.features(), u"Name"_s, of("Name", ofFeature, feature), 0),
        cell("feature, unit", user.features(), u"unit"_s, of("Unit", ofFeature, feature), 0),
        cell("feature, default", user.features(), u"defval"_s, of("DefVal", ofFeature, feature), 0),
        cell("content", user.contents(), u"cont"_s, of("Cont", "tblCont WHERE ID", content), 50),
        {"chapter", renameChapter, "SELECT hex(Name) FROM tblSYB WHERE Code='010101'",
         [this] { return user.tree()->selectedNode()->text(0).mid(7); }},
        cell("second-level content", user.contents(), u"cont"_s,
             of("SubCont", "tblContDe WHERE SubNum=1 AND ContID", content), 50, 1),
        cell("value", user.values(), u"eigenValue"_s,
             of("EigenValue", "tblSpecEnum WHERE ID", user.values()->text(0, u"ID"_s)), 0),
    };
    (all.end() - 2)->rows = 2;
    all.back().rows = 4;
    all.back().trimmed = false;
    return all;
}

bool HostileText::tryAt(const Place& place, const QString& text) {
    const QStringList before = contentOf(user.path());
    const QString expected = place.taken(text);
    const QStringList said = messagesOf([&](ModalAnswers& answers) { place.type(answers, text); });
    const QStringList after = contentOf(user.path());
    const bool stored = !breaksStatement(expected);
    const auto records = std::count_if(said.begin(), said.end(), isRecord);
    if (stored) {
        EXPECT_EQ(records, 0) << qPrintable(said.join(u'\n'));
        EXPECT_EQ(rowsInFile(user.path(), place.stored), QStringList{hex(expected)});
        EXPECT_TRUE(place.shown() == expected) << qPrintable(hex(place.shown()));
        EXPECT_EQ(after.size(), before.size());
        int changed = 0;
        for (qsizetype i = 0; i < qMin(after.size(), before.size()); ++i)
            changed += after[i] != before[i] ? 1 : 0;
        EXPECT_LE(changed, place.rows);
    } else {
        EXPECT_TRUE(records == 1 && said.filter(QRegularExpression(u"^\\w+\\.\\w* 1$"_s)).size() == 1)
            << qPrintable(said.join(u'\n'));
        EXPECT_EQ(after, before);
    }
    expectWindowIsFile();
    return stored;
}

// --- Texts that are there ----------------------------------------------------------------------------------------

/// What a library holds that nobody touches.
QStringList untouched(const QString& path) {
    return rowsInFile(path, "SELECT * FROM tblBill WHERE Code LIKE '070101%'") +
           rowsInFile(path, "SELECT * FROM tblCont WHERE Code LIKE '070101%'") +
           rowsInFile(path, "SELECT * FROM sqlite_schema");
}

class HostileStored : public Workplace {
protected:
    HostileStored() : Workplace(hostileLibrary()) {}

    /// Runs a command; unless a part of its work stays by its nature, a recorded error means that nothing changed.
    void run(int host, int command, bool partsStay = false) {
        SCOPED_TRACE(testing::Message() << "command " << host << '.' << command);
        const QStringList before = contentOf(user.path());
        const QStringList said = messagesOf([&] { user.run(host, command); });
        const bool failed = std::any_of(said.begin(), said.end(), isRecord);
        ++commands;
        failures += failed ? 1 : 0;
        EXPECT_TRUE(!failed || partsStay || contentOf(user.path()) == before);
        EXPECT_EQ(untouched(user.path()), canary);
    }

    /// Every cell, and a tool tip, show the text of the bill in `row` literally.
    void expectShown(int row) {
        SCOPED_TRACE(qPrintable(texts[row].left(60)));
        const QString whole = QString::fromUtf8(texts[row].toUtf8());
        user.click(user.bills(), row, u"Name"_s);
        EXPECT_TRUE(user.bills()->text(row, u"Name"_s) == whole && user.features()->text(0, u"Name"_s) == whole);
        EXPECT_TRUE(user.values()->text(0, u"eigenValue"_s) == whole);
        EXPECT_TRUE(user.contents()->text(0, u"cont"_s) == whole && user.contents()->text(1, u"cont"_s) == whole);
        QTreeWidgetItem* chapter = user.tree()->selectedNode();
        chapter->setText(0, QString(400, u'x') + whole.left(100));
        QHelpEvent hover(QEvent::ToolTip, user.tree()->visualItemRect(chapter).center(), QPoint(10, 10));
        QCoreApplication::sendEvent(user.tree()->viewport(), &hover);
        const QString shown = QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
        for (const char* literal : {"<b>", "&#39;", "%1", "&File", "<img"})
            EXPECT_EQ(shown.contains(QLatin1String(literal)), whole.left(100).contains(QLatin1String(literal)));
    }

    const QStringList& texts = hostileTexts();
    const QStringList canary = untouched(user.path());
    int commands = 0;
    int failures = 0;
};

}  // namespace

TEST_F(HostileText, IsStoredAsTypedOrRefusedWithoutATrace) {
    const std::vector<Place> all = places();
    const int step = extent(16, 1);
    int cases = 0;
    int stored = 0;
    for (int number = 0; number < hostileTexts().size(); ++number) {
        const QString& text = hostileTexts()[number];
        for (int i = number % step; i < static_cast<int>(all.size()); i += step, ++cases) {
            const Place& place = all[static_cast<std::size_t>(i)];
            SCOPED_TRACE(testing::Message() << place.name << ": " << qPrintable(text.left(60)));
            stored += tryAt(place, text) ? 1 : 0;
        }
    }
    const QString figures = u"hostile texts typed: %1 texts, %2 places, %3 stored, %4 refused"_s;
    reportFigures(figures.arg(hostileTexts().size()).arg(all.size()).arg(stored).arg(cases - stored));
}

TEST_F(HostileText, IsOnlyLookedForInTheQueryAndAsARation) {
    ASSERT_FALSE(user.profession()->isEditable());
    const QStringList before = contentOf(user.path());
    OtherProgram other(user.path());
    int queries = 0;
    for (int number = 0; number < hostileTexts().size(); number += extent(6, 1), ++queries) {
        const QString& text = hostileTexts()[number];
        SCOPED_TRACE(qPrintable(text.left(60)));
        const QString line = QString(text).replace(lineBreak, u" "_s);
        const QString code = trimBlanks(wholeCharacters(line.left(150))).toUpper();
        QStringList said = messagesOf([&] { typeInCell(user.contents(), 2, u"cont"_s, text); });
        EXPECT_TRUE(!breaksStatement(code) || said.takeFirst() == u"frmEditor.GetDeData 1"_s);
        EXPECT_TRUE(said == QStringList{u"提示: 定额 [%1] 不存在, 请重新输入!"_s.replace(u"%1"_s, code)});

        const QStringList found = other.run("SELECT ID FROM tblBill WHERE Code LIKE '%' || ? || '%'", {text});
        enter(user.search(), text);
        const bool unreadable = text.contains(QChar::Null);
        EXPECT_EQ(messagesOf([this] { user.key(user.search(), Qt::Key_Return); }).size(), unreadable ? 1 : 0);
        EXPECT_TRUE(unreadable || user.bills()->rowCount() == found.size());
        messagesOf([this] { click("010101"); });
    }
    EXPECT_EQ(contentOf(user.path()), before);
    expectWindowIsFile();
    reportFigures(u"hostile texts looked for: %1 queries, %1 rations"_s.arg(queries));
}

TEST_F(HostileStored, IsShownAsItIsAndLeadsNoCommandAstray) {
    click("010102");
    ASSERT_EQ(user.bills()->rowCount(), texts.size());
    for (int row = 0; row < texts.size(); row += extent(3, 1))
        expectShown(row);
    for (int row = 0; row < user.bills()->rowCount(); row += extent(24, 1)) {
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
        EXPECT_EQ(messagesOf([&] { user.edit(user.bills(), user.bills()->row(), u"Name"_s, u"x"_s); }), QStringList());
    }
    for (const int command : {200, 201})
        run(2, command);
    click("010101");
    for (int row = 0; row < user.bills()->rowCount(); row += extent(2, 1)) {
        user.bills()->setRow(row);
        for (const int command : {105, 104})
            run(2, command);
        run(2, 400, true);
        user.contents()->setRow(0);
        run(2, 401, true);
    }
    messagesOf([this] { reopen(); });
    // The deepest first: a chapter below one that is gone is not shown.
    for (qsizetype i = hostileChapters().size() - 1; i >= 0; --i) {
        SCOPED_TRACE(qPrintable(hostileChapters()[i]));
        const auto node = [&] { return user.tree()->node(u'K' + hostileChapters()[i]); };
        ASSERT_TRUE(node());
        for (const int command : {102, 105, 104, 101, 103}) {
            messagesOf([&] { user.click(node()); });
            ASSERT_EQ(user.chapter(), hostileChapters()[i]);
            run(1, command, command == 103);
            messagesOf([this] { user.editor()->chapterPane()->CreateTvwSYB(); });
            if (!node())
                break;
        }
    }
    EXPECT_EQ(integrityOf(user.path()), u"ok"_s);
    messagesOf([this] { reopen(); });
    reportFigures(u"hostile texts stored: %1 commands, %2 refused"_s.arg(commands).arg(failures));
}

TEST_F(HostileStored, RationLibrariesAndTheirListAreDataToo) {
    const QString list = appPath + u"tessel.dat"_s;
    const KeptFile kept(list);
    const QString path = joinPath(dataPath + u"广东省"_s, u"hostile.db"_s);
    QFile::remove(path);
    {
        writeSystemDatabase(list, {{u"HOSTILE"_s, u"x"_s, u"hostile.db"_s, u"广东省"_s, u"0"_s}});
        OtherProgram system(list, systemKey);
        system.run("BEGIN");
        for (const QString& text : texts)
            system.run("INSERT INTO SysBaseData VALUES(?1,?1,?1,?1,?1,'1')", {text});
        system.run("COMMIT");
        writeRationLibrary(path, {});
        OtherProgram library(path);
        library.run("BEGIN");
        library.run("INSERT INTO DeSYB VALUES(1,1,0,0,0,0,?,0)", {texts[0]});
        for (int i = 0; i < texts.size(); ++i)
            library.run("INSERT INTO DEB(sybID,DEH,MC,DW) VALUES(1,?,?,?)",
                        {i % 2 ? texts[i] : u"C%1"_s.arg(i), texts[i], texts[(i + 5) % texts.size()]});
        library.run("COMMIT");
    }
    EXPECT_EQ(messagesOf([this] { reopen(); }), QStringList());
    click("030101");
    const int ration = 2;
    ASSERT_EQ(user.contents()->level(ration), 2);
    user.contents()->setCell(ration, u"cont"_s);
    const QString id = user.contents()->text(ration, u"contDeID"_s);

    frmDekBrowser browser(user.window());
    browser.setParetnForm(user.editor());
    browser.show();
    ASSERT_EQ(browser.cboDek()->count(), texts.size() + 1);
    // Every library that is listed can be chosen; none is there but the first.
    for (int entry = 1; entry < browser.cboDek()->count(); entry += extent(4, 1)) {
        const QString dekId = browser.cboDek()->itemData(entry).toString();
        const bool shownWhole = dekId.size() < 2000 && !dekId.contains(lineBreak);
        EXPECT_TRUE(!shownWhole || browser.cboDek()->itemText(entry) == dekId);
        EXPECT_EQ(messagesOf([&] { browser.setDekID(dekId); }).size(), 1) << qPrintable(dekId);
    }
    browser.setDekID(u"HOSTILE"_s);
    const KeyedTree* tree = browser.tvRationContent();
    ASSERT_TRUE(tree->node(u"K1"_s));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(tree->node(u"K1"_s)).center());
    ASSERT_EQ(browser.grdDEB()->rowCount(), texts.size());
    int chosen = 0;
    int refused = 0;
    for (int row = 0; row < texts.size(); row += extent(5, 1), ++chosen) {
        SCOPED_TRACE(qPrintable(texts[row].left(60)));
        browser.grdDEB()->setRow(row);
        user.contents()->setRow(ration);
        const QStringList before = contentOf(user.path());
        const QStringList said = messagesOf([&] { browser.CommandBars1()->execute(260); });
        const QString code = browser.grdDEB()->text(row, u"DEH"_s);
        const QString unit = texts[(row + 5) % texts.size()];
        if (breaksStatement(code + texts[row] + unit)) {
            ++refused;
            EXPECT_FALSE(said.isEmpty());
            EXPECT_TRUE(contentOf(user.path()) == before);
            continue;
        }
        EXPECT_EQ(said, QStringList());
        const QStringList stored{hex(code), hex(texts[row]), hex(unit), u"HOSTILE"_s};
        const SqlText query = sql("SELECT hex(Deh),hex(Name),hex(Unit),DekID FROM tblContDe WHERE ID=", id);
        EXPECT_EQ(rowsInFile(user.path(), query), QStringList{stored.join(u'|')});
    }
    browser.hide();
    QFile::remove(path);
    const QString figures = u"hostile ration libraries: %1 listed, %2 rations chosen, %3 refused"_s;
    reportFigures(figures.arg(texts.size()).arg(chosen).arg(refused));
}
