#include "tests/faults/Workplace.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

Workplace::Workplace(const QString& path) : user(path), comparison(user, prescribed) {
    prescribed.follow(user.editor()->library());
    click("010101");
}

void Workplace::click(const char* chapter) {
    KeyedTree::Node* node = user.tree()->node(u'K' + QString::fromLatin1(chapter));
    ASSERT_TRUE(node) << chapter;
    user.click(node);
    EditorDriver::settle();
}

void Workplace::reopen() {
    if (user.editor())
        user.close();
    user.open();
    prescribed.everythingLoaded();
    prescribed.follow(user.editor()->library());
}

QStringList Workplace::messagesOf(const std::function<void(ModalAnswers&)>& act) {
    ModalAnswers answers;
    answers.otherwise(answer);
    act(answers);
    EditorDriver::settle();
    QStringList said = answers.takeRecords();
    said.removeIf([](const QString& text) { return text.contains(u"确认"_s) || text.contains(u"确实"_s); });
    user.activate();
    return said;
}

QStringList Workplace::messagesOf(const std::function<void()>& act) {
    return messagesOf([&](ModalAnswers&) { act(); });
}

void Workplace::answer(QWidget* window) {
    if (const auto* box = qobject_cast<QMessageBox*>(window)) {
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        QAbstractButton* yes = box->button(QMessageBox::Yes);
        QTest::mouseClick(yes ? yes : box->button(QMessageBox::Ok), Qt::LeftButton);
    } else if (auto* name = window->findChild<QLineEdit*>(u"txtContent"_s)) {
        EditorDriver::typeOver(name, u"新"_s);
        QTest::keyClick(name, Qt::Key_Return);
    } else {
        window->close();
    }
}

QStringList Workplace::rename(const QString& name) {
    return messagesOf([&] { user.edit(user.bills(), 0, u"Name"_s, name); });
}

QStringList Workplace::typeCode(const QString& code) {
    return messagesOf([&] {
        QWidget* editor = user.openEditor(user.contents(), 2, u"cont"_s);
        ASSERT_TRUE(editor);
        EditorDriver::typeOver(editor, code);
        user.key(editor, Qt::Key_Return);
        user.contents()->cancelEdit();
    });
}

void Workplace::expectWindowIsFile() {
    user.activate();
    EditorDriver::settle();
    comparison.check(QString());
}

void Workplace::expectThatWorkGoesOn() {
    SCOPED_TRACE("what is done next");
    const QString name = u"之后%1"_s.arg(++m_edits);
    EXPECT_EQ(rename(name), QStringList());
    EXPECT_EQ(rowsInFile(user.path(), sql("SELECT Name FROM tblBill WHERE ID=", user.bills()->text(0, u"id"_s))),
              QStringList{name});
}

QStringList contentOf(const QString& library) {
    QStringList all;
    for (const QString& table :
         rowsInFile(library, "SELECT name FROM sqlite_schema WHERE name NOT LIKE 'sqlite_stat%' ORDER BY name"))
        all << table << rowsInFile(library, sql("SELECT * FROM ", table));
    return all;
}

QString integrityOf(const QString& library) { return rowsInFile(library, "PRAGMA integrity_check").join(u'\n'); }
