#include "tests/environment/Workplace.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>

#include "editor/bills/BillPane.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {
const QString nameKey = QStringLiteral("Name");
}

Workplace::Workplace(const QString& path) : user(path), comparison(user, prescribed) {
    watch();
    click("010101");
}

void Workplace::watch() {
    BillPane* bills = user.editor()->billPane();
    bills->billChanged = [this, load = bills->billChanged](qint64 id) {
        prescribed.detailsLoaded(QString::number(id));
        load(id);
    };
}

void Workplace::click(const char* chapter) {
    KeyedTree::Node* node = user.tree()->node(QLatin1Char('K') + QString::fromLatin1(chapter));
    ASSERT_TRUE(node) << chapter;
    user.click(node);
    EditorDriver::settle();
}

void Workplace::reopen() {
    user.close();
    user.open();
    prescribed.everythingLoaded();
    watch();
}

QStringList Workplace::messagesOf(const std::function<void(ModalAnswers&)>& act) {
    static const QRegularExpression record(QStringLiteral("错误位置: (\\S+)\\s+错误号码: (-?\\d+)"));
    ModalAnswers answers;
    answers.closeAnything();
    act(answers);
    EditorDriver::settle();
    QStringList said;
    for (const QString& text : answers.takeSeen()) {
        const auto found = record.match(text);
        if (found.hasMatch())
            said << found.captured(1) + QLatin1Char(' ') + found.captured(2);
        else if (!text.contains(QStringLiteral("确认")) && !text.contains(QStringLiteral("确实")))
            said << text;
    }
    user.activate();
    return said;
}

QStringList Workplace::messagesOf(const std::function<void()>& act) {
    return messagesOf([&](ModalAnswers&) { act(); });
}

void Workplace::giveName(ModalAnswers& answers, const QString& name) {
    answers.then([name](QWidget* dialog) {
        auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtContent"));
        ASSERT_TRUE(box);
        EditorDriver::typeOver(box, name);
        QTest::keyClick(box, Qt::Key_Return);
    });
}

void Workplace::expectWindowIsFile() {
    user.activate();
    EditorDriver::settle();
    comparison.check(QString());
}

void Workplace::expectThatWorkGoesOn() {
    SCOPED_TRACE("what is done next");
    const ModalAnswers noMessages;
    const QString name = QStringLiteral("之后%1").arg(++m_edits);
    ASSERT_TRUE(user.edit(user.bills(), 0, nameKey, name));
    EditorDriver::settle();
    EXPECT_EQ(
        rowsInFile(user.path(), sql("SELECT Name FROM tblBill WHERE ID=", user.bills()->text(0, QStringLiteral("id")))),
        QStringList{name});
}

QStringList contentOf(const QString& library) {
    QStringList all;
    for (const QString& table :
         rowsInFile(library, "SELECT name FROM sqlite_schema WHERE name NOT LIKE 'sqlite_stat%' ORDER BY name"))
        all << table << rowsInFile(library, sql("SELECT * FROM ", table));
    return all;
}

QString integrityOf(const QString& library) {
    return rowsInFile(library, "PRAGMA integrity_check").join(QLatin1Char('\n'));
}
