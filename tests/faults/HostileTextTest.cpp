// Hostile texts, typed and in codes. One that breaks its statement is refused: an error is told and nothing in the file
// changes. Any other is stored and shown as it is, and changes nothing else.

#include "tests/faults/Workplace.h"

namespace {

QString hex(const QString& text) { return QString::fromLatin1(text.toUtf8().toHex().toUpper()); }

/// Replaces what a box holds by `text`, at once, as an input method gives it.
void enterAtOnce(QWidget* box, const QString& text) {
    EditorDriver::typeOver(box, {});
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(box, &event);
}

class HostileText : public Workplace {};

}  // namespace

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
