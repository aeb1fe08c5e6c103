// Hostile texts, typed and brought along by libraries. One that breaks its statement is refused: an error is told and
// nothing in the file changes. Any other is stored and shown as it is, and changes nothing else.

#include <QInputMethodEvent>
#include <QPlainTextEdit>

#include "tests/faults/Workplace.h"
#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"
#include "tests/walk/Judge.h"

namespace {

/// Texts that try to break out of a statement, a message, a menu or a line, or that are merely unusual.
const QStringList hostileTexts{
    // Out of the quotes; without an apostrophe nothing of it is a statement.
    u"'"_s, u"'; DROP TABLE tblBill; --"_s, u"x'||(SELECT 1)||'"_s, u"%27 OR 1=1"_s, u"/* comment"_s,
    u"\" OR \"\"=\""_s, u"%_[a-z]*?"_s, u"?1 :name @name $name"_s, u"\\ \\n \\0 \\x27 \\u0027"_s,
    // Placeholders, rich text, mnemonics.
    u"%1 %2 %L1 %n %s %d %%"_s, u"<img src=x><a href=\"y\">z</a>"_s, u"&#39; &apos; &lt;"_s, u"&File && &x"_s,
    u"title [*]"_s, u"#1;a|#2;b|..."_s,
    // Marks without width, combining marks, look-alikes.
    u"a\xA0\xADz"_s, u"a\x200B\x200D\xFEFF\x2060z"_s, u"a\x202E\x2066\x200Fz"_s, u"a\xFFFC\xFFFDz"_s,
    u"🏗️👷🏽‍♀️🇨🇳"_s, u"𠀀𪚥 龘"_s, u"a\x0301\x0302\x0303\x0489z"_s, u"ﬁ ß İ ı ſ K Å"_s,
    // Blanks, numbers, length.
    u" both "_s, u"\u3000wide\u3000"_s, u"1e999"_s, u"NULL"_s, QString(500, u'w'), QString(500, u'字') + u'\''};

QString hex(const QString& text) { return QString::fromLatin1(text.toUtf8().toHex().toUpper()); }

/// Replaces what a box holds by `text`, at once, as an input method gives it.
void enterAtOnce(QWidget* box, const QString& text) {
    EditorDriver::typeOver(box, {});
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(box, &event);
}

/// A library that holds these texts wherever it can.
QString hostileLibrary() {
    const QString path = awkwardLibrary();
    OtherProgram other(path);
    other.run("BEGIN");
    for (const char* cells :
         {"tblSYB SET Name=?1", "tblBill SET Name=?1,Unit=?1,Rule=?1,Cont=?1", "tblBillSpec SET Name=?1,DefVal=?1",
          "tblSpecEnum SET EigenValue=?1", "tblCont SET Cont=?1", "tblContDe SET Deh=?1,Name=?1"})
        for (qsizetype i = 0; i < hostileTexts.size(); ++i)
            other.rows(u"UPDATE %1 WHERE ID%%2=%3"_s.arg(QLatin1String(cells)).arg(hostileTexts.size()).arg(i),
                       {hostileTexts[i]});
    other.run("COMMIT");
    return path;
}

class HostileText : public Workplace {};

}  // namespace

TEST(HostileTexts, InALibraryAreShownAsTheyAreAndLeadNoCommandAstray) {
    repeated(2, [](unsigned seed) {
        const QString library = hostileLibrary();
        const QStringList schema = rowsInFile(library, "SELECT * FROM sqlite_schema");
        {
            EditorDriver driver(library);
            RandomUser user(driver, seed, {});
            const Judge judge(driver, user);
            for (int step = 0; step < 400 && !::testing::Test::HasFailure(); ++step)
                user.step();
            EXPECT_FALSE(::testing::Test::HasFailure()) << qPrintable(user.story());
        }
        EXPECT_EQ(integrityOf(library), u"ok"_s);
        EXPECT_EQ(rowsInFile(library, "SELECT * FROM sqlite_schema"), schema);
    });
}

TEST_F(HostileText, LosesHalvesOfCharactersAndHasTheLineEndsOfItsPlace) {
    const struct {
        QString typed, cell, box;
    } texts[] = {
        {u"a\r\n\r\tz"_s, u"a   z"_s, u"a\r\n\r\n\tz"_s},
        {u"a\x0B\x0C\x85\x2028z"_s, u"a    z"_s, u"a\x0B\x0C\x85\x2028z"_s},
        // The marks that the toolkit has for ends of lines in a box.
        {u"a\xFDD0\xFDD1\xFDEFz"_s, u"a\xFDD0\xFDD1\xFDEFz"_s, u"a\r\n\r\n\xFDEFz"_s},
        {u"a\x01\x07\x08\x1B\x7Fz"_s, u"a\x01\x07\x08\x1B\x7Fz"_s, u"a\x01\x07\x08\x1B\x7Fz"_s},
        {u"a\xDC00\xD800z"_s, u"az"_s, u"az"_s},
        {u"a😀\xD800z"_s, u"a😀z"_s, u"a😀z"_s},
    };
    const auto enterInCell = [this](const QString& text) {
        QWidget* editor = user.openEditor(user.bills(), 0, u"Name"_s);
        enterAtOnce(editor, text);
        user.key(editor, Qt::Key_Return);
    };
    const auto enterInBox = [this](const QString& text) {
        user.typeInto(user.rule(), QString());
        enterAtOnce(user.rule(), text);
        user.key(user.rule(), Qt::Key_Tab);
    };
    for (const auto& [typed, cell, box] : texts) {
        SCOPED_TRACE(qPrintable(cell));
        EXPECT_EQ(messagesOf([&, text = typed] { enterInCell(text), enterInBox(text); }), QStringList());
        EXPECT_EQ(rowsInFile(path, "SELECT hex(Name),hex(Rule) FROM tblBill WHERE Code='010101001'"),
                  QStringList{hex(cell) + u'|' + hex(box)});
        expectWindowIsFile();
    }
    for (const auto& enter : {std::function<void(const QString&)>(enterInCell), {enterInBox}})
        EXPECT_EQ(messagesOf([&] { enter(u"a\0z"_s); }), QStringList{u"ModDBOperator.ExecuteDDL 1"_s});
    expectWindowIsFile();
}

TEST_F(HostileText, InTheCodesOfChaptersLeadsNoCommandAstray) {
    const QStringList codes = u"0'¦&<¦0\"¦01';¦01; ¦&<b>¦0'--¦01';--¦0101''¦0101'1¦01; --¦&<b>#1"_s.split(u'¦');
    for (const QString& code : codes)
        OtherProgram(path).run("INSERT INTO tblSYB(Code,Name) VALUES(?1,?1)", {code});
    const auto others = [&] {
        return rowsInFile(path, "SELECT * FROM tblBill") + rowsInFile(path, "SELECT * FROM sqlite_schema");
    };
    const QStringList untouched = others();
    reopen();
    // The deepest first: a chapter below one that is gone is not shown.
    for (qsizetype i = codes.size() - 1; i >= 0; --i) {
        for (const int command : {102, 105, 104, 101, 103}) {
            if (KeyedTree::Node* chapter = user.tree()->node(u'K' + codes[i]))
                messagesOf([&] { user.click(chapter), user.run(1, command); });
            ASSERT_EQ(others(), untouched) << qPrintable(codes[i]) << ' ' << command;
        }
    }
    EXPECT_EQ(integrityOf(path), u"ok"_s);
}
