#include "tests/faults/Workplace.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>

#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "tests/support/Libraries.h"
#include "tests/support/Snapshot.h"
#include "tests/support/Typing.h"

namespace {

std::string textOf(const frmEditor& editor) {
    const Snapshot all = snapshotOf(editor);
    std::string text;
    for (const Rows* rows : {&all.tree, &all.bills, &all.features, &all.values, &all.contents})
        text += textOf(*rows) + "\n--\n";
    return text + all.rule.toStdString() + "\n--\n" + all.content.toStdString();
}

}  // namespace

Workplace::Workplace() : user(&main, awkwardLibrary()) {
    main.MDIForm_Load();
    main.resize(1366, 768);
    main.show();
    user.activate();
    reopen();
}

void Workplace::click(const char* chapter) {
    KeyedTree::Node* node = user.tree()->node(u'K' + QString::fromLatin1(chapter));
    ASSERT_TRUE(node) << chapter;
    user.click(node);
    EditorDriver::settle();
}

void Workplace::reopen(const char* chapter) {
    if (user.editor())
        user.close();
    main.LoadBillDB(path);
    EditorDriver::settle();
    ASSERT_TRUE(user.editor());
    user.activate();
    click(chapter);
}

QStringList Workplace::messagesOf(const std::function<void(ModalAnswers&)>& act) {
    ModalAnswers answers;
    answers.otherwise(answer);
    act(answers);
    EditorDriver::settle();
    static const QRegularExpression told(u"^(?!.*(确认|确实)).*(: |^\\w+\\.\\w* -?\\d+$)"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    user.activate();
    return answers.takeRecords().filter(told);
}

QStringList Workplace::messagesOf(const std::function<void()>& act) {
    return messagesOf([&](ModalAnswers&) { act(); });
}

void Workplace::answer(QWidget* window) {
    if (const auto* box = qobject_cast<QMessageBox*>(window)) {
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_LE(box->text().size(), 2001);
        QAbstractButton* yes = box->button(QMessageBox::Yes);
        QTest::mouseClick(yes ? yes : box->button(QMessageBox::Ok), Qt::LeftButton);
    } else if (auto* name = window->findChild<QLineEdit*>(u"txtContent"_s)) {
        EditorDriver::typeOver(name, u"新"_s);
        QTest::keyClick(name, Qt::Key_Return);
    } else {
        window->close();
    }
}

bool Workplace::tellsError(const QStringList& said, const char* numbers) {
    return said.contains(QRegularExpression(u"^\\w+\\.\\w* (%1)$"_s.arg(QLatin1String(numbers))));
}

QStringList Workplace::rename(const QString& name) {
    return messagesOf([&] { user.edit(user.bills(), 0, u"Name"_s, name); });
}

QStringList Workplace::typeCode(const QString& code) {
    return messagesOf([&] {
        EXPECT_TRUE(user.edit(user.contents(), 2, u"cont"_s, code));
        user.contents()->cancelEdit();
    });
}

QStringList Workplace::enter(int command, const char* name, const QString& text) {
    return messagesOf([&](ModalAnswers& answers) {
        answers.then([&](QWidget* dialog) {
            auto* box = dialog->findChild<QLineEdit*>(QLatin1String(name));
            ASSERT_TRUE(box);
            box->setFocus();
            box->selectAll();
            typeText(box, text);
            QTest::keyClick(box, Qt::Key_Return);
            if (dialog->isVisible())
                QTest::keyClick(box, Qt::Key_Escape);
        });
        main.commandBars()->execute(command);
    });
}

std::string Workplace::shown() const { return textOf(*user.editor()); }

void Workplace::expectWindowIsFile() {
    const ModalAnswers noMessages;
    frmEditor fresh(&main);
    fresh.setDBFilePath(path);
    ASSERT_TRUE(fresh.Form_Load());
    KeyedTree::Node* node = fresh.chapterPane()->tvSYB()->node(u'K' + user.chapter());
    ASSERT_TRUE(node) << qPrintable(user.chapter());
    fresh.chapterPane()->tvSYB_NodeClick(node);
    fresh.billPane()->grdBillList()->setRow(user.bills()->row());
    fresh.featurePane()->grdSpec()->setRow(user.features()->row());
    EXPECT_EQ(shown(), textOf(fresh));
    EXPECT_FALSE(QFile::exists(path + u"-journal"_s)) << "something is uncommitted";
}

void Workplace::expectThatWorkGoesOn() {
    SCOPED_TRACE("what is done next");
    if (user.chapter() != u"010101"_s || !user.bills()->hasRows())
        click("010101");
    const QString name = u"之后%1"_s.arg(++m_edits);
    EXPECT_EQ(rename(name), QStringList());
    EXPECT_EQ(rowsInFile(path, sql("SELECT Name FROM tblBill WHERE ID=", user.bills()->text(0, u"id"_s))),
              QStringList{name});
}

QString integrityOf(const QString& library) { return rowsInFile(library, "PRAGMA integrity_check").join(u'\n'); }
