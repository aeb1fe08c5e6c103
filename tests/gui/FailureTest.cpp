// Failures as the user meets them. After each one the window still shows what the file gives, and what is done next
// works and is in the file even if the process ends there and then.

#include <gtest/gtest.h>

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>

#include "editor/bills/BillPane.h"
#include "storage/LibraryConnection.h"
#include "tests/gui/Comparison.h"
#include "tests/gui/Disturbance.h"
#include "tests/gui/EditorDriver.h"
#include "tests/gui/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

const QString nameKey = QStringLiteral("Name");
const QString idKey = QStringLiteral("id");
const QString contKey = QStringLiteral("cont");

class Failures : public ::testing::Test {
protected:
    Failures() : user(awkwardLibrary()), comparison(user, prescribed) {
        watch();
        click("010101");
        user.pragma("PRAGMA busy_timeout=0");
    }

    void watch() {
        BillPane* bills = user.editor()->billPane();
        bills->billChanged = [this, load = bills->billChanged](qint64 id) {
            prescribed.detailsLoaded(QString::number(id));
            load(id);
        };
    }

    void reopen() {
        user.close();
        user.open();
        prescribed.everythingLoaded();
        watch();
    }

    void click(const char* code) {
        KeyedTree::Node* node = user.tree()->node(QLatin1Char('K') + QString::fromLatin1(code));
        ASSERT_TRUE(node) << code;
        user.click(node);
        EditorDriver::settle();
    }

    /// Does `act` and gives the places of the errors that were recorded, and all other messages as they are.
    QStringList messagesOf(const std::function<void(ModalAnswers&)>& act) {
        static const QRegularExpression place(QStringLiteral("错误位置: (\\S+)"));
        ModalAnswers answers;
        answers.closeAnything();
        act(answers);
        EditorDriver::settle();
        QStringList seen = answers.takeSeen();
        for (QString& text : seen) {
            const auto record = place.match(text);
            if (record.hasMatch())
                text = record.captured(1);
        }
        user.activate();
        return seen;
    }

    /// Answers the name dialog by typing a name and Enter.
    static void giveName(ModalAnswers& answers, const QString& name) {
        answers.then([name](QWidget* dialog) {
            auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtContent"));
            ASSERT_TRUE(box);
            EditorDriver::typeOver(box, name);
            QTest::keyClick(box, Qt::Key_Return);
        });
    }

    void expectWindowIsFile() {
        user.activate();
        EditorDriver::settle();
        comparison.check(QString());
    }

    /// The rows of a query in the file as it lies on the disk now, without any closing.
    QStringList rowsAfterKill(const SqlText& query) const {
        const QString left = user.path() + QStringLiteral(".left");
        QFile::remove(left);
        EXPECT_TRUE(QFile::copy(user.path(), left));
        EXPECT_FALSE(QFile::exists(user.path() + QStringLiteral("-journal")));
        EXPECT_EQ(rowsInFile(left, "PRAGMA integrity_check"), QStringList{QStringLiteral("ok")});
        const QStringList rows = rowsInFile(left, query);
        QFile::remove(left);
        return rows;
    }

    /// An edit, a command without and one with a savepoint in each room.
    void expectThatWorkGoesOn() {
        SCOPED_TRACE("what is done next");
        const ModalAnswers noMessages;
        click("010101");
        const QString name = QStringLiteral("之后%1").arg(++m_edits);
        ASSERT_TRUE(user.edit(user.bills(), 0, nameKey, name));
        EditorDriver::settle();
        const QString bill = user.bills()->text(0, idKey);
        EXPECT_EQ(rowsAfterKill(sql("SELECT Name FROM tblBill WHERE ID=", bill)), QStringList{name});

        const int features = user.features()->rowCount();
        user.run(3, 300);
        EditorDriver::settle();
        EXPECT_EQ(rowsAfterKill(sql("SELECT ID FROM tblBillSpec WHERE BillID=", bill)).size(), features + 1);

        user.run(2, 400);
        EditorDriver::settle();
        const QString content = user.contents()->text(user.contents()->row(), QStringLiteral("contID"));
        EXPECT_EQ(rowsAfterKill(sql("SELECT BillID FROM tblCont WHERE ID=", content)), QStringList{bill});

        user.run(2, 200);
        EditorDriver::settle();
        EXPECT_EQ(rowsAfterKill(sql("SELECT Code FROM tblBill WHERE ID=", user.bills()->text(1, idKey))),
                  QStringList{QStringLiteral("010101002")});

        user.run(1, 105);
        EditorDriver::settle();
        EXPECT_EQ(rowsAfterKill(sql("SELECT Code FROM tblBill WHERE ID=", bill)),
                  QStringList{QStringLiteral("010102001")});
        user.run(1, 104);
        expectWindowIsFile();
    }

    EditorDriver user;
    Prescribed prescribed;
    Comparison comparison;

private:
    int m_edits = 0;
};

class FailuresOfLocking : public Failures, public ::testing::WithParamInterface<Disturbance::Kind> {};

QStringList one(const char* message) { return {QString::fromUtf8(message)}; }

}  // namespace

TEST_F(Failures, AnApostropheIsRefusedWhereverItIsTyped) {
    const QString typed = QStringLiteral("x' WHERE 1=1; --");
    const SqlText all =
        "SELECT name FROM tblSYB UNION ALL SELECT name FROM tblBill UNION ALL SELECT Rule FROM tblBill UNION ALL "
        "SELECT cont FROM tblCont UNION ALL SELECT subCont FROM tblContDe UNION ALL SELECT name FROM tblBillSpec "
        "UNION ALL SELECT EigenValue FROM tblSpecEnum";
    const QStringList before = rowsInFile(user.path(), all);
    const auto named = [&](int command) {
        return messagesOf([&](ModalAnswers& answers) {
            giveName(answers, typed);
            user.run(1, command);
        });
    };
    EXPECT_EQ(named(100).value(1), QStringLiteral("frmEditor.AddBillSYB"));
    EXPECT_EQ(named(102).value(1), QStringLiteral("frmEditor."));
    const auto edited = [&](KeyedGrid* grid, int row, const QString& key) {
        return messagesOf([&](ModalAnswers&) { user.edit(grid, row, key, typed); });
    };
    const QStringList refused = one("ModDBOperator.ExecuteDDL");
    EXPECT_EQ(edited(user.bills(), 1, nameKey), refused);
    EXPECT_EQ(edited(user.features(), 0, nameKey), refused);
    EXPECT_EQ(edited(user.values(), 1, QStringLiteral("eigenValue")), one("frmEditor.grdSpecEnum_AfterEdit"));
    EXPECT_EQ(edited(user.contents(), 0, contKey), refused);
    EXPECT_EQ(edited(user.contents(), 1, contKey), refused);
    EXPECT_EQ(messagesOf([&](ModalAnswers&) {
                  user.typeInto(user.rule(), typed);
                  user.key(user.rule(), Qt::Key_Tab);
              }),
              refused);
    EXPECT_EQ(rowsInFile(user.path(), all), before);
    expectWindowIsFile();
    expectThatWorkGoesOn();
}

TEST_F(Failures, AChapterCodeThatExistsIsNotAddedAgain) {
    // Another program has added a chapter that the tree does not show yet.
    GetOrmConn(user.path())->Execute("INSERT INTO tblSYB(Code,Name) VALUES('0501','theirs'),('06','theirs')");
    for (const auto& [selected, command] : {std::pair("05", 101), std::pair("05", 100)}) {
        click(selected);
        const QStringList seen = messagesOf([&](ModalAnswers& answers) {
            giveName(answers, QStringLiteral("ours"));
            user.run(1, command);
        });
        EXPECT_EQ(seen.value(1), QStringLiteral("提示: 目录编号已经存在!"));
        EXPECT_EQ(seen.size(), 2);
        EXPECT_EQ(user.chapter(), QLatin1String(selected));
    }
    EXPECT_EQ(rowsInFile(user.path(), "SELECT ID FROM tblSYB WHERE Name='ours'"), QStringList());
    reopen();
    expectThatWorkGoesOn();
}

TEST_P(FailuresOfLocking, ChangeNeitherTheWindowNorTheFile) {
    const QString x = QStringLiteral("x");
    const auto command = [this](int host, int id) { return [this, host, id](ModalAnswers&) { user.run(host, id); }; };
    const auto confirmed = [this](int host, int id) {
        return [this, host, id](ModalAnswers& answers) {
            answers.press(QMessageBox::Yes);
            user.run(host, id);
        };
    };
    const auto typed = [this, x](KeyedGrid* grid, int row, const QString& key) {
        return [this, x, grid, row, key](ModalAnswers&) { user.edit(grid, row, key, x); };
    };
    const std::vector<std::function<void(ModalAnswers&)>> tries{
        typed(user.bills(), 0, nameKey),
        command(2, 200),
        command(2, 105),
        confirmed(2, 201),
        command(3, 300),
        command(3, 301),
        command(4, 300),
        typed(user.values(), 0, QStringLiteral("eigenValue")),
        command(2, 400),
        typed(user.contents(), 1, contKey),
        confirmed(2, 403),
        command(1, 105),
        [&](ModalAnswers& answers) {
            giveName(answers, x);
            user.run(1, 102);
        },
    };
    const QStringList before = rowsInFile(user.path(), "SELECT * FROM tblBill");
    int count = 0;
    for (const auto& act : tries) {
        SCOPED_TRACE(testing::Message() << "try " << ++count);
        {
            const Disturbance other(user.path(), GetParam());
            EXPECT_FALSE(messagesOf(act).isEmpty());
        }
        expectWindowIsFile();
    }
    EXPECT_EQ(rowsInFile(user.path(), "SELECT * FROM tblBill"), before);
    expectThatWorkGoesOn();
}

INSTANTIATE_TEST_SUITE_P(By, FailuresOfLocking,
                         ::testing::Values(Disturbance::Kind::Locked, Disturbance::Kind::Written));

TEST_F(Failures, AChapterOfALockedFileCanBeClickedAgain) {
    const Rows listed = rowsOf(user.bills());
    {
        const Disturbance other(user.path(), Disturbance::Kind::Locked);
        EXPECT_EQ(messagesOf([&](ModalAnswers&) { click("030101"); }), one("frmEditor.LoadBill"));
        EXPECT_EQ(textOf(rowsOf(user.bills())), textOf(listed));
    }
    click("030101");
    EXPECT_EQ(user.bills()->rowCount(), 2);
    expectWindowIsFile();
    expectThatWorkGoesOn();
}

TEST_F(Failures, AFileThatIsReadElsewhereTakesTheEditLater) {
    // Deleting a chapter is not undone when it cannot be brought to an end; it is as soon as that is possible.
    click("030101");
    {
        const Disturbance other(user.path(), Disturbance::Kind::Read);
        const QStringList seen = messagesOf([&](ModalAnswers& answers) {
            answers.press(QMessageBox::Yes);
            user.run(1, 103);
        });
        EXPECT_EQ(seen.mid(1),
                  (QStringList{QStringLiteral("ModDBOperator.ReleaseSP"), QStringLiteral("Connection.Commit")}));
        EXPECT_EQ(user.chapter(), QStringLiteral("030101"));
    }
    EditorDriver::settle();
    EXPECT_EQ(rowsAfterKill("SELECT Code FROM tblBill WHERE Code LIKE '030101%'"), QStringList());
    reopen();
    expectThatWorkGoesOn();
}

TEST_F(Failures, AFullDiskLosesNothing) {
    const QString pages = rowsInFile(user.path(), "PRAGMA page_count").value(0);
    user.pragma(sql("PRAGMA max_page_count=", pages));
    const QString stored = user.rule()->toPlainText();
    QGuiApplication::clipboard()->setText(QStringLiteral("long\n").repeated(20'000));
    EXPECT_EQ(messagesOf([&](ModalAnswers&) {
                  user.typeInto(user.rule(), QString());
                  user.key(user.rule(), Qt::Key_V, Qt::ControlModifier);
                  user.key(user.rule(), Qt::Key_Tab);
              }),
              one("ModDBOperator.ExecuteDDL"));
    EXPECT_EQ(user.rule()->toPlainText(), stored);
    expectWindowIsFile();

    // Bill by bill until nothing more fits; the one that does not is not listed.
    user.click(user.bills(), user.bills()->rowCount() - 1, nameKey);
    QStringList seen;
    for (int bills = 0; seen.isEmpty() && bills < 900; ++bills) {
        const int rows = user.bills()->rowCount();
        seen = messagesOf([&](ModalAnswers&) { user.run(2, 200); });
        EXPECT_EQ(user.bills()->rowCount(), rows + (seen.isEmpty() ? 1 : 0));
    }
    EXPECT_EQ(seen.value(0), QStringLiteral("frmEditor.mnuAddBill_Click"));
    expectWindowIsFile();
    for (const int command : {400, 200, 105})
        messagesOf([&](ModalAnswers&) { user.run(2, command); });
    messagesOf([&](ModalAnswers&) { user.run(1, 105); });
    EXPECT_EQ(rowsAfterKill("PRAGMA quick_check"), one("ok"));

    user.pragma("PRAGMA max_page_count=1000000");
    reopen();
    expectThatWorkGoesOn();
}

TEST_F(Failures, ADeleteThatMatchesNoRowIsUndone) {
    user.click(user.bills(), 1, nameKey);
    const QString id = user.bills()->text(1, idKey);
    const Rows listed = rowsOf(user.bills());
    const SqlText dependents = sql("SELECT ID FROM tblBillSpec WHERE BillID=", id,
                                   " UNION ALL SELECT ID FROM tblCont "
                                   "WHERE BillID=",
                                   id);
    GetOrmConn(user.path())->Execute(sql("DELETE FROM tblBill WHERE ID=", id));
    const QStringList before = rowsInFile(user.path(), dependents);
    ASSERT_FALSE(before.isEmpty());
    EXPECT_EQ(messagesOf([&](ModalAnswers& answers) {
                  answers.press(QMessageBox::Yes);
                  user.run(2, 201);
              }).size(),
              1);
    EXPECT_EQ(textOf(rowsOf(user.bills())), textOf(listed));
    EXPECT_EQ(rowsAfterKill(dependents), before);
    expectThatWorkGoesOn();
}

TEST_F(Failures, ARejectedCodeKeepsTheEditorOpen) {
    KeyedGrid* contents = user.contents();
    const int row = 2;
    ASSERT_EQ(contents->level(row), 2);
    const QString id = contents->text(row, QStringLiteral("contDeID"));
    const SqlText stored = sql("SELECT Deh FROM tblContDe WHERE ID=", id);
    const QStringList before = rowsInFile(user.path(), stored);
    QWidget* editor = user.openEditor(contents, row, contKey);
    ASSERT_TRUE(editor);
    EditorDriver::typeOver(editor, QStringLiteral("nothing"));
    // Enter, a command, another chapter: the code has to be put right first, and each is answered once.
    const QStringList rejected = one("提示: 定额 [NOTHING] 不存在, 请重新输入!");
    EXPECT_EQ(messagesOf([&](ModalAnswers&) { user.key(editor, Qt::Key_Return); }), rejected);
    EXPECT_TRUE(contents->isEditing());
    EXPECT_EQ(messagesOf([&](ModalAnswers&) { user.run(2, 400); }), rejected);
    EXPECT_TRUE(contents->isEditing());
    EXPECT_EQ(rowsInFile(user.path(), stored), before);
    EditorDriver::typeOver(editor, QStringLiteral("a1-3"));
    EXPECT_EQ(messagesOf([&](ModalAnswers&) { user.key(editor, Qt::Key_Return); }), QStringList());
    EXPECT_FALSE(contents->isEditing());
    EXPECT_EQ(rowsAfterKill(stored), one("A1-3"));
    EXPECT_TRUE(contents->text(row, contKey).startsWith(QLatin1String("[A1-3] ")));
    expectWindowIsFile();
    expectThatWorkGoesOn();
}
