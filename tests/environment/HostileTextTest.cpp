// Every hostile text in every place where a text can be typed. A text that breaks its statement is refused: an error is
// recorded and nothing in the file changes. Any other is stored as it was typed, and changes nothing else.

#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>

#include "app/base/Text.h"
#include "tests/environment/HostileTexts.h"
#include "tests/environment/OtherProgram.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

/// Replaces what a box holds by `text`, at once, as an input method or the clipboard gives it.
void enter(QWidget* box, const QString& text) {
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(box, &event);
}

class HostileText : public Workplace {
protected:
    HostileText() : Workplace(awkwardLibrary()) {}

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
        bool trimmed = true;
    };

    QString idOf(KeyedGrid* grid, const char* key, int row = 0) { return grid->text(row, QString::fromLatin1(key)); }
    auto inCell(KeyedGrid* grid, const char* key, int row = 0) {
        return [this, grid, row, key = QString::fromLatin1(key)](ModalAnswers&, const QString& text) {
            QWidget* box = user.openEditor(grid, row, key);
            ASSERT_TRUE(box);
            enter(box, text);
            user.key(box, Qt::Key_Return);
        };
    }
    auto inBox(QPlainTextEdit* box) {
        return [this, box](ModalAnswers&, const QString& text) {
            user.typeInto(box, QString());
            enter(box, text);
            user.key(box, Qt::Key_Tab);
        };
    }
    auto inNameDialog(int command) {
        return [this, command](ModalAnswers& answers, const QString& text) {
            answers.then([text](QWidget* dialog) {
                auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtContent"));
                enter(box, text);
                QTest::keyClick(box, Qt::Key_Return);
            });
            user.run(1, command);
        };
    }
    auto ofCell(KeyedGrid* grid, const char* key, int row = 0) {
        return [grid, row, key = QString::fromLatin1(key)] { return grid->text(row, key); };
    }
    auto ofBox(const QPlainTextEdit* box) {
        return [box] { return box->document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1String("\r\n")); };
    }
    std::vector<Place> places();
    static QString taken(const Place& place, const QString& text);
    void tryAt(const Place& place, const QString& text);

    int stored = 0;
    int refused = 0;
};

std::vector<HostileText::Place> HostileText::places() {
    const QString bill = idOf(user.bills(), "id");
    const QString feature = idOf(user.features(), "id");
    const QString value = idOf(user.values(), "ID");
    const QString content = idOf(user.contents(), "contID");
    EXPECT_EQ(user.contents()->level(1), 1);
    return {
        {"bill, prefix", inCell(user.bills(), "CodePreFix"), sql("SELECT hex(CodePrefix) FROM tblBill WHERE ID=", bill),
         ofCell(user.bills(), "CodePreFix"), 8},
        {"bill, name", inCell(user.bills(), "Name"), sql("SELECT hex(Name) FROM tblBill WHERE ID=", bill),
         ofCell(user.bills(), "Name"), 50},
        {"bill, unit", inCell(user.bills(), "Unit"), sql("SELECT hex(Unit) FROM tblBill WHERE ID=", bill),
         ofCell(user.bills(), "Unit"), 12},
        {"rule", inBox(user.rule()), sql("SELECT hex(Rule) FROM tblBill WHERE ID=", bill), ofBox(user.rule()), 0, 1,
         true},
        {"content text", inBox(user.content()), sql("SELECT hex(Cont) FROM tblBill WHERE ID=", bill),
         ofBox(user.content()), 0, 1, true},
        {"feature, name", inCell(user.features(), "Name"), sql("SELECT hex(Name) FROM tblBillSpec WHERE ID=", feature),
         ofCell(user.features(), "Name")},
        {"feature, unit", inCell(user.features(), "unit"), sql("SELECT hex(Unit) FROM tblBillSpec WHERE ID=", feature),
         ofCell(user.features(), "unit")},
        {"feature, default", inCell(user.features(), "defval"),
         sql("SELECT hex(DefVal) FROM tblBillSpec WHERE ID=", feature), ofCell(user.features(), "defval")},
        {"value", inCell(user.values(), "eigenValue"), sql("SELECT hex(EigenValue) FROM tblSpecEnum WHERE ID=", value),
         ofCell(user.values(), "eigenValue"), 0, 4, false, false},
        {"content", inCell(user.contents(), "cont"), sql("SELECT hex(Cont) FROM tblCont WHERE ID=", content),
         ofCell(user.contents(), "cont"), 50},
        {"second-level content", inCell(user.contents(), "cont", 1),
         sql("SELECT DISTINCT hex(SubCont) FROM tblContDe WHERE SubNum=1 AND ContID=", content),
         ofCell(user.contents(), "cont", 1), 50, 2},
        {"chapter", inNameDialog(102), "SELECT hex(Name) FROM tblSYB WHERE Code='010101'",
         [this] { return user.tree()->selectedNode()->text(0).mid(7); }},
    };
}

/// What the place holds after `text` was put into it.
QString HostileText::taken(const Place& place, const QString& text) {
    if (place.manyLines) {
        QString lines = wholeCharacters(text);
        // The toolkit's own marks of a paragraph, two of which are no characters anywhere else.
        for (const char16_t* end : {u"\r\n", u"\r", u"\u2029", u"\uFDD0", u"\uFDD1"})
            lines.replace(QString::fromUtf16(end), QStringLiteral("\n"));
        return lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    }
    const QString fits = wholeCharacters(place.limit > 0 ? text.left(place.limit) : text);
    return place.trimmed ? trimBlanks(fits) : fits;
}

void HostileText::tryAt(const Place& place, const QString& text) {
    const QStringList before = contentOf(user.path());
    const QString expected = taken(place, text);
    const QStringList said = messagesOf([&](ModalAnswers& answers) { place.type(answers, text); });
    const QStringList after = contentOf(user.path());
    if (breaksStatement(expected)) {
        ++refused;
        EXPECT_EQ(said.filter(QRegularExpression(QStringLiteral("^\\w+\\.\\w* 1$"))).size(), 1)
            << qPrintable(said.join(QLatin1Char('\n')));
        EXPECT_EQ(after, before);
    } else {
        ++stored;
        EXPECT_EQ(said.filter(QRegularExpression(QStringLiteral("^\\w+\\.\\w* "))), QStringList());
        EXPECT_EQ(rowsInFile(user.path(), place.stored),
                  QStringList{QString::fromLatin1(expected.toUtf8().toHex().toUpper())});
        EXPECT_TRUE(place.shown() == expected) << place.shown().toUtf8().toHex().constData();
        EXPECT_EQ(after.size(), before.size());
        int changed = 0;
        for (qsizetype i = 0; i < qMin(after.size(), before.size()); ++i)
            changed += after[i] != before[i] ? 1 : 0;
        EXPECT_LE(changed, place.rows);
    }
    expectWindowIsFile();
}

}  // namespace

TEST_F(HostileText, IsStoredAsTypedOrRefusedWithoutATrace) {
    const std::vector<Place> all = places();
    const int step = extent(8, 1);
    int number = 0;
    for (const QString& text : hostileTexts()) {
        ++number;
        for (std::size_t i = 0; i < all.size(); ++i) {
            if ((static_cast<int>(i) + number) % step != 0)
                continue;
            SCOPED_TRACE(testing::Message() << all[i].name << ": " << qPrintable(text.left(60)));
            tryAt(all[i], text);
        }
    }
    reportFigures(QStringLiteral("hostile texts typed: %1 texts, %2 places, %3 stored, %4 refused")
                      .arg(number)
                      .arg(all.size())
                      .arg(stored)
                      .arg(refused));
}

TEST_F(HostileText, IsOnlyLookedForInTheQueryAndAsARation) {
    ASSERT_FALSE(user.profession()->isEditable());
    const int ration = 2;
    ASSERT_EQ(user.contents()->level(ration), 2);
    const QStringList before = contentOf(user.path());
    const QString shown = user.contents()->text(ration, QStringLiteral("cont"));
    OtherProgram other(user.path());
    int queries = 0;
    int number = 0;
    for (const QString& text : hostileTexts()) {
        if (number++ % extent(4, 1) != 0)
            continue;
        SCOPED_TRACE(qPrintable(text.left(60)));
        const QString code = trimBlanks(wholeCharacters(text.left(150))).toUpper();
        QStringList said = messagesOf([&] {
            QWidget* box = user.openEditor(user.contents(), ration, QStringLiteral("cont"));
            ASSERT_TRUE(box);
            enter(box, text);
            user.key(box, Qt::Key_Return);
            user.contents()->cancelEdit();
        });
        EXPECT_TRUE(!breaksStatement(code) || said.takeFirst() == QStringLiteral("frmEditor.GetDeData 1"));
        EXPECT_TRUE(said ==
                    QStringList{QStringLiteral("提示: 定额 [") + code + QStringLiteral("] 不存在, 请重新输入!")});
        EXPECT_EQ(user.contents()->text(ration, QStringLiteral("cont")), shown);

        const QStringList found = other.run("SELECT ID FROM tblBill WHERE Code LIKE '%' || ? || '%'", {text});
        enter(user.search(), text);
        const bool unreadable = text.contains(QChar::Null);
        EXPECT_EQ(messagesOf([this] { user.key(user.search(), Qt::Key_Return); }).size(), unreadable ? 1 : 0);
        EXPECT_TRUE(unreadable || user.bills()->rowCount() == found.size());
        ++queries;
        messagesOf([this] { click("010101"); });
    }
    EXPECT_EQ(contentOf(user.path()), before);
    expectWindowIsFile();
    reportFigures(QStringLiteral("hostile texts looked for: %1 queries, %1 rations").arg(queries));
}
