// Commands that fail with their savepoint open, as the user meets them: afterwards everything that is done, in that
// window and in another one, is in the file as soon as it is done, even if the process ends there and then, and stays
// there when the window is closed. And other failures that have their own story.

#include <sqlite3.h>

#include <QFile>

#include "storage/LibraryConnection.h"
#include "tests/support/Disturbance.h"
#include "tests/support/Libraries.h"
#include "tests/faults/Workplace.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

const QString nameKey = u"Name"_s;
const QString idKey = u"id"_s;
const QString contKey = u"cont"_s;

QStringList one(const char* message) { return {QString::fromUtf8(message)}; }

/// A library as it lies on the disk now: what would be left if the process ended.
class Left {
public:
    explicit Left(const QString& library) : path(library + u".left"_s) {
        QFile::remove(path);
        EXPECT_TRUE(QFile::copy(library, path));
        EXPECT_FALSE(QFile::exists(library + u"-journal"_s));
        EXPECT_EQ(integrityOf(path), u"ok"_s);
    }
    ~Left() { QFile::remove(path); }
    Left(const Left&) = delete;
    Left& operator=(const Left&) = delete;

    const QString path;
};

class Failures : public Workplace {
protected:
    Failures() : Workplace(awkwardLibrary()) { user.pragma("PRAGMA busy_timeout=0"); }

    static QStringList rowsAfterKill(const QString& library, const SqlText& query) {
        return rowsInFile(Left(library).path, query);
    }

    /// Does something in each room of the window, with a savepoint and without.
    void expectThatWorkGoesOnEverywhere() {
        SCOPED_TRACE("what is done next");
        const ModalAnswers noMessages;
        click("010101");
        expectThatWorkGoesOn();
        const QString bill = user.bills()->text(0, idKey);
        const auto left = [&](const SqlText& query) {
            EditorDriver::settle();
            return rowsAfterKill(user.path(), query);
        };
        const int features = user.features()->rowCount();
        user.run(3, 300);
        EXPECT_EQ(left(sql("SELECT ID FROM tblBillSpec WHERE BillID=", bill)).size(), features + 1);
        user.run(2, 400);
        const QString content = user.contents()->text(user.contents()->row(), u"contID"_s);
        EXPECT_EQ(left(sql("SELECT BillID FROM tblCont WHERE ID=", content)), QStringList{bill});
        user.run(2, 200);
        EXPECT_EQ(left(sql("SELECT Code FROM tblBill WHERE ID=", user.bills()->text(1, idKey))), one("010101002"));
        user.run(1, 105);
        EXPECT_EQ(left(sql("SELECT Code FROM tblBill WHERE ID=", bill)), one("010102001"));
        user.run(1, 104);
        expectWindowIsFile();
    }
};

// --- Savepoints that stay open -----------------------------------------------------------------------------------

class OpenSavepoints : public Failures, public ::testing::WithParamInterface<Disturbance::Kind> {
protected:
    OpenSavepoints() : other(user.window(), copyOfSampleLibrary(u"other.bdb"_s)) {
        user.window()->LoadBillDB(other.path());
        const auto nodes = other.tree()->nodes();
        const auto withBills = [](const KeyedTree::Node* node) { return KeyedTree::tag(node).size() == 6; };
        other.click(*std::find_if(nodes.begin(), nodes.end(), withBills));
        EXPECT_TRUE(other.bills()->hasRows());
        user.bringToFront();
    }

    /// A bill is renamed; a second connection sees it at once, and so does who looks at what a kill would leave.
    void expectEditIsWritten(const EditorDriver& library) {
        library.bringToFront();
        const ModalAnswers noMessages;
        const QString name = u"以后%1"_s.arg(++m_edits);
        ASSERT_TRUE(library.edit(library.bills(), 0, nameKey, name));
        EditorDriver::settle();
        const SqlText stored = sql("SELECT Name FROM tblBill WHERE ID=", library.bills()->text(0, idKey));
        EXPECT_EQ(rowsInFile(library.path(), stored), QStringList{name});
        EXPECT_EQ(rowsAfterKill(library.path(), stored), QStringList{name});
    }

    void goTo(KeyedGrid* grid, int level) const {
        int row = grid->rowCount() - 1;
        while (row > 0 && grid->level(row) != level)
            --row;
        ASSERT_GE(row, 0);
        grid->setCell(row, contKey);
    }

    EditorDriver other;

private:
    int m_edits = 0;
};

}  // namespace

TEST_P(OpenSavepoints, KeepNothingFromTheFile) {
    const auto run = [this](int host, int id) { return [this, host, id] { user.run(host, id); }; };
    const auto onContent = [this](int level, int id) {
        return [this, level, id] {
            goTo(user.contents(), level);
            user.run(2, id);
        };
    };
    enum After { RolledBack, StaysAsFarAsItCame };
    const struct {
        const char* place;
        const char* refused;
        After after;
        std::function<void()> act;
        const char* chapter = "010101";
    } commands[] = {
        {"mnuAddBill_Click", "UPDATE ON tblCont", RolledBack, run(2, 200)},
        {"mnuDeleteBill_Click", "DELETE ON tblBill", RolledBack, run(2, 201)},
        {"MoveBillRow", "UPDATE ON tblBill", RolledBack, run(2, 105)},
        {"mnuDeleteFeature_Click", "DELETE ON tblBillSpec", RolledBack, run(3, 301)},
        {"grdSpecEnum_AfterEdit", "UPDATE ON tblBillSpec", RolledBack,
         [this] { user.edit(user.values(), 0, u"eigenValue"_s, u"x"_s); }},
        {"munAddBillCont_Click", "INSERT ON tblCont", StaysAsFarAsItCame, run(2, 400)},
        {"munAddBillSubCont_Click", "INSERT ON tblContDe", StaysAsFarAsItCame, onContent(1, 401)},
        {"mnuDelBillCont_Click", "DELETE ON tblCont", RolledBack, onContent(0, 403)},
        {"munDelBillSubCont_Click", "DELETE ON tblContDe", RolledBack, onContent(1, 403)},
        {"munDelBillContDe_Click", "UPDATE ON tblContDe", StaysAsFarAsItCame, onContent(2, 403)},
        {"ExchangeSYBNode", "UPDATE ON tblCont", RolledBack, run(1, 105)},
        {"DeleteBillSYB", "DELETE ON tblSYB", StaysAsFarAsItCame, run(1, 103), "030101"},
    };
    for (const auto& command : commands) {
        SCOPED_TRACE(command.place);
        click(command.chapter);
        user.pragma("PRAGMA busy_timeout=0");
        const QStringList before = contentOf(user.path());
        QStringList said;
        {
            const Disturbance disturbance(user.path(), GetParam(), QString::fromLatin1(command.refused), user.editor());
            said = messagesOf(command.act);
        }
        const bool couldBegin = GetParam() == Disturbance::Kind::Refused || GetParam() == Disturbance::Kind::Read;
        if (GetParam() == Disturbance::Kind::Read) {
            EXPECT_EQ(said.value(0), u"ModDBOperator.ReleaseSP 5"_s);
        } else if (GetParam() == Disturbance::Kind::Refused) {
            EXPECT_EQ(said, QStringList{u"frmEditor.%1 19"_s.arg(QLatin1String(command.place))});
        } else {
            EXPECT_FALSE(said.isEmpty());
        }
        expectEditIsWritten(other);
        user.bringToFront();
        EXPECT_EQ(contentOf(user.path()), contentOf(Left(user.path()).path));
        if (command.after == RolledBack || !couldBegin) {
            EXPECT_EQ(contentOf(user.path()), before);
            expectWindowIsFile();
        }
        click("010101");
        expectEditIsWritten(user);
        if (command.after == StaysAsFarAsItCame)
            reopen();
    }
    expectThatWorkGoesOnEverywhere();
    const QStringList last = contentOf(user.path());
    user.window()->commandBars()->execute(260);
    EditorDriver::settle();
    EXPECT_EQ(contentOf(user.path()), last);
    EXPECT_EQ(contentOf(Left(user.path()).path), last);
    expectEditIsWritten(other);
}

INSTANTIATE_TEST_SUITE_P(By, OpenSavepoints,
                         ::testing::Values(Disturbance::Kind::Refused, Disturbance::Kind::Read,
                                           Disturbance::Kind::Written, Disturbance::Kind::Locked));

TEST_F(OpenSavepoints, OfADeleteThatMatchesNoRow) {
    user.click(user.bills(), 1, nameKey);
    const Rows listed = rowsOf(user.bills());
    GetOrmConn(user.path())->Execute(sql("DELETE FROM tblBill WHERE ID=", user.bills()->text(1, idKey)));
    const QStringList before = contentOf(user.path());
    EXPECT_EQ(messagesOf([&] { user.run(2, 201); }), QStringList());
    EXPECT_EQ(textOf(rowsOf(user.bills())), textOf(listed));
    EXPECT_EQ(contentOf(user.path()), before);
    expectEditIsWritten(user);
    expectEditIsWritten(other);
}

TEST_F(OpenSavepoints, OfALibraryThatCannotBeMade) {
    // There is room for a few tables only.
    const auto small = [](sqlite3* database, char**, const sqlite3_api_routines*) {
        return sqlite3_exec(database, "PRAGMA max_page_count=5", nullptr, nullptr, nullptr);
    };
    const auto entry = reinterpret_cast<void (*)()>(+small);
    const QString path = user.path() + u".new.bdb"_s;
    sqlite3_auto_extension(entry);
    EXPECT_EQ(messagesOf([&] { EXPECT_FALSE(user.window()->NewBillDB(path)); }).value(0),
              u"ModDBOperator.ExecuteDDL 13"_s);
    sqlite3_cancel_auto_extension(entry);
    EXPECT_EQ(rowsInFile(path, "SELECT name FROM sqlite_schema"), QStringList());
    QFile::remove(path);
    expectEditIsWritten(user);
    expectEditIsWritten(other);
}

// --- Other failures ----------------------------------------------------------------------------------------------

TEST_F(Failures, AChapterCodeThatExistsIsNotAddedAgain) {
    // Another program has added a chapter that the tree does not show yet.
    GetOrmConn(user.path())->Execute("INSERT INTO tblSYB(Code,Name) VALUES('0501','theirs'),('06','theirs')");
    for (const int command : {101, 100}) {
        click("05");
        const QStringList seen = messagesOf([&] { user.run(1, command); });
        EXPECT_EQ(seen.mid(1), one("提示: 目录编号已经存在!"));
        EXPECT_EQ(user.chapter(), u"05"_s);
    }
    EXPECT_EQ(rowsInFile(user.path(), "SELECT ID FROM tblSYB WHERE Name='新'"), QStringList());
    reopen();
    expectThatWorkGoesOnEverywhere();
}

TEST_F(Failures, AChapterOfALockedFileCanBeClickedAgain) {
    const QStringList before = contentOf(user.path());
    for (const auto& [list, refused] :
         {std::pair<std::function<void()>, const char*>([&] { click("030101"); }, "frmEditor.LoadBill 5"),
          {[&] { user.typeQuery(u"0"_s), user.run(2, 202); }, "frmEditor.mnuQueryBill_Click 5"}}) {
        click("010101");
        const Disturbance other(user.path(), Disturbance::Kind::Locked);
        EXPECT_EQ(messagesOf(list), one(refused));
        EXPECT_FALSE(user.bills()->hasRows());
        EXPECT_FALSE(user.contents()->hasRows());
    }
    // No command takes bills of another listing, or none, for what could not be listed.
    user.run(2, 200);
    user.run(2, 201);
    EXPECT_EQ(contentOf(user.path()), before);
    click("030101");
    {
        const Disturbance other(user.path(), Disturbance::Kind::Locked);
        messagesOf([&] { click("030101"); });
    }
    user.run(2, 200);
    EXPECT_EQ(contentOf(user.path()), before);
    EXPECT_EQ(user.bills()->rowCount(), 2);
    expectWindowIsFile();
    expectThatWorkGoesOnEverywhere();
}

TEST_F(Failures, ARejectedCodeKeepsTheEditorOpen) {
    KeyedGrid* contents = user.contents();
    const int row = 2;
    ASSERT_EQ(contents->level(row), 2);
    const SqlText stored = sql("SELECT Deh FROM tblContDe WHERE ID=", contents->text(row, u"contDeID"_s));
    const QStringList before = rowsInFile(user.path(), stored);
    QWidget* editor = user.openEditor(contents, row, contKey);
    ASSERT_TRUE(editor);
    EditorDriver::typeOver(editor, u"nothing"_s);
    // Enter, a command: the code has to be put right first, and each is answered once.
    const QStringList rejected = one("提示: 定额 [NOTHING] 不存在, 请重新输入!");
    EXPECT_EQ(messagesOf([&] { user.key(editor, Qt::Key_Return); }), rejected);
    EXPECT_TRUE(contents->isEditing());
    EXPECT_EQ(messagesOf([&] { user.run(2, 400); }), rejected);
    EXPECT_TRUE(contents->isEditing());
    EXPECT_EQ(rowsInFile(user.path(), stored), before);
    EditorDriver::typeOver(editor, u"a1-3"_s);
    EXPECT_EQ(messagesOf([&] { user.key(editor, Qt::Key_Return); }), QStringList());
    EXPECT_FALSE(contents->isEditing());
    EXPECT_EQ(rowsAfterKill(user.path(), stored), one("A1-3"));
    EXPECT_TRUE(contents->text(row, contKey).startsWith(u"[A1-3] "_s));
    expectWindowIsFile();
    expectThatWorkGoesOnEverywhere();
}
