// Every command that writes, failing in every way: the error is told, window and file are as they were, and what is
// done next is in the file as soon as it is done. Where a part is meant to stay that was done before the error, that
// part is in the file at once.

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>

#include "tests/faults/Workplace.h"
#include "tests/support/Disturbance.h"
#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"

using namespace Qt::StringLiterals;

namespace {

using Kind = Disturbance::Kind;

/// A code that could not be written stays in the grid.
enum After { Undone, UndoneInFile, AsFarAsItCame };

struct Command {
    const char* place;    ///< that records its failure
    const char* refused;  ///< a change that comes late in it
    After after;
    std::function<void()> act;
    const char* chapter = "010101";
};

class FailedCommands : public Workplace {
protected:
    FailedCommands() : Workplace(awkwardLibrary()), library(bytesOf(user.path())) {}

    std::function<void()> run(int host, int id, int row = 0) {
        return [=, this] {
            user.bills()->setRow(row);
            user.run(host, id);
        };
    }
    std::function<void()> onContent(int level, int id) {
        return [=, this] {
            KeyedGrid* contents = user.contents();
            int row = contents->rowCount() - 1;
            while (row > 0 && contents->level(row) != level)
                --row;
            contents->setCell(row, u"cont"_s);
            user.run(2, id);
        };
    }
    std::function<void()> edit(KeyedGrid* (EditorDriver::*grid)() const, const char* key) {
        return [=, this] { user.edit((user.*grid)(), 0, QLatin1String(key), u"新文"_s); };
    }

    void restore(const char* chapter) {
        if (bytesOf(user.path()) != library) {
            user.close();
            overwrite(user.path(), library);
        }
        isOpen() ? click(chapter) : reopen(chapter);
    }

    const QByteArray library;
    const char* const ddl = "ModDBOperator.ExecuteDDL";
    const std::vector<Command> commands{
        {"frmEditor.AddBillSYB", "INSERT ON tblSYB", Undone, run(1, 100)},
        {"frmEditor.AddBillSYB", "INSERT ON tblSYB", Undone, run(1, 101), "0301"},
        {"frmEditor.", "UPDATE ON tblSYB", Undone, run(1, 102)},
        {"frmEditor.DeleteBillSYB", "DELETE ON tblSYB", AsFarAsItCame, run(1, 103), "030101"},
        {"frmEditor.ExchangeSYBNode", "UPDATE ON tblCont", Undone, run(1, 105)},
        {"frmEditor.mnuAddBill_Click", "UPDATE ON tblCont", Undone, run(2, 200)},
        {"frmEditor.mnuDeleteBill_Click", "DELETE ON tblBill", Undone, run(2, 201)},
        {"frmEditor.MoveBillRow", "UPDATE ON tblBill", Undone, run(2, 105)},
        {ddl, "UPDATE ON tblBill", Undone, edit(&EditorDriver::bills, "Name")},
        {ddl, "UPDATE ON tblBill", Undone,
         [this] {
             user.typeInto(user.rule(), u"新文"_s);
             user.key(user.rule(), Qt::Key_Tab);
         }},
        {ddl, "INSERT ON tblBillSpec", Undone, run(3, 300)},
        {"frmEditor.mnuDeleteFeature_Click", "DELETE ON tblBillSpec", Undone, run(3, 301)},
        {ddl, "UPDATE ON tblBillSpec", Undone, edit(&EditorDriver::features, "Name")},
        {ddl, "INSERT ON tblSpecEnum", Undone, run(4, 300)},
        {"frmEditor.mnuDeleteFeatureVal_Click", "DELETE ON tblSpecEnum", Undone, run(4, 301)},
        {"frmEditor.grdSpecEnum_AfterEdit", "UPDATE ON tblBillSpec", Undone, edit(&EditorDriver::values, "eigenValue")},
        {"frmEditor.munAddBillCont_Click", "INSERT ON tblCont", AsFarAsItCame, run(2, 400)},
        {"frmEditor.munAddBillSubCont_Click", "INSERT ON tblContDe", AsFarAsItCame, onContent(1, 401)},
        {"frmEditor.mnuDelBillCont_Click", "DELETE ON tblCont", Undone, onContent(0, 403)},
        {"frmEditor.munDelBillSubCont_Click", "DELETE ON tblContDe", Undone, onContent(1, 403)},
        {"frmEditor.munDelBillContDe_Click", "UPDATE ON tblContDe", AsFarAsItCame, onContent(2, 403)},
        {ddl, "UPDATE ON tblContDe", UndoneInFile, [this] { user.edit(user.contents(), 2, u"cont"_s, u"a1-3"_s); }},
    };
};

}  // namespace

TEST_F(FailedCommands, LeaveWindowAndFileAsTheyWere) {
    for (const Kind kind : {Kind::Refused, Kind::Read, Kind::Written, Kind::Locked}) {
        for (const Command& command : commands) {
            SCOPED_TRACE(testing::Message() << command.place << ", kind " << static_cast<int>(kind));
            restore(command.chapter);
            const QStringList before = contentOf(user.path());
            const std::string shownBefore = shown();
            QStringList said;
            {
                const Disturbance other(user.path(), kind, QString::fromLatin1(command.refused), user.editor());
                said = messagesOf(command.act);
            }
            // What was held up is committed with the next event.
            EditorDriver::settle();
            if (kind == Kind::Refused)
                EXPECT_EQ(said, QStringList{QString::fromLatin1(command.place) + u" 19"_s});
            else
                EXPECT_FALSE(said.filter(QRegularExpression(u"^\\w+\\.\\w* 5$"_s)).isEmpty())
                    << qPrintable(said.join(u'\n'));
            const bool couldBegin = kind == Kind::Refused || kind == Kind::Read;
            const bool undone = command.after != AsFarAsItCame || !couldBegin;
            EXPECT_TRUE(!undone || contentOf(user.path()) == before);
            EXPECT_TRUE(!undone || command.after == UndoneInFile || shown() == shownBefore) << shown();
            expectThatWorkGoesOn();
            EXPECT_FALSE(QFile::exists(user.path() + u"-journal"_s)) << "something is uncommitted";
            ASSERT_FALSE(HasFailure());
        }
    }
}

TEST_F(FailedCommands, LeaveNoTraceWhereverTheDiskFails) {
    using Disk = FaultyDisk;
    static const QRegularExpression reading(
        u"^frmEditor\\.(CreateTvwSYB|Load\\w+|ListBillData|ExecuteDDL|grdBillList_AfterRowColChange) 10$"_s);
    const std::function<void(int)> faults[] = {
        [this](int at) { disk.becomeFullAt(at, false); },
        [this](int at) { disk.becomeFullAt(at, true); },
        [this](int at) { disk.failAt(at, Disk::Changes, false); },
        [this](int at) { disk.failAt(at, Disk::Changes, true); },
        [this](int at) { disk.failAt(at, Disk::Sync, false); },
        [this](int at) { disk.failAt(at, Disk::Read, false); },
        [this](int at) { disk.failAt(at, Disk::Read, true); },
    };
    int failed = 0;
    for (std::size_t number = 0; number < commands.size(); ++number) {
        const Command& command = commands[number];
        restore(command.chapter);
        disk.relieve();
        EXPECT_EQ(messagesOf(command.act), QStringList());
        const auto operations = qMax(disk.operations(), disk.reads());
        for (int at = 1; at <= operations; ++at) {
            const std::size_t fault = (number + static_cast<std::size_t>(at)) % std::size(faults);
            SCOPED_TRACE(testing::Message()
                         << command.place << ' ' << command.refused << ", fault " << fault << " at operation " << at);
            restore(command.chapter);
            const QStringList before = contentOf(user.path());
            const std::string shownBefore = shown();
            faults[fault](at);
            const QStringList said = messagesOf(command.act);
            failed += disk.failures() > 0 ? 1 : 0;
            EXPECT_TRUE(disk.failures() > 0 || said.isEmpty());
            disk.relieve();
            EXPECT_EQ(integrityOf(user.path()), u"ok"_s);
            const bool done = contentOf(user.path()) != before;
            EXPECT_TRUE(done || !said.isEmpty()) << "it failed and nobody said so";
            EXPECT_TRUE(done || command.after != Undone || shown() == shownBefore) << shown();
            // Of a command that was done, what it leads to may be unreadable.
            EXPECT_TRUE(!done || command.after == AsFarAsItCame || said.filter(reading) == said);
            expectThatWorkGoesOn();
            ASSERT_FALSE(HasFailure()) << qPrintable(said.join(u'\n'));
        }
    }
    EXPECT_GT(failed, 200);
    counted(u"commands that a disk failed"_s, failed);
}

TEST_F(FailedCommands, ALibraryThatCannotBeMadeLeavesNothing) {
    const QString path = user.path() + u".new.bdb"_s;
    for (int at = 1; at < 1000; ++at) {
        SCOPED_TRACE(at);
        disk.failAt(at, FaultyDisk::Write | FaultyDisk::Sync, true);
        const QStringList said = messagesOf([&] { (void)main.NewBillDB(path); });
        const auto failures = disk.failures();
        disk.relieve();
        const QStringList tables = rowsInFile(path, "SELECT name FROM sqlite_schema WHERE name LIKE 'tbl%'");
        EXPECT_EQ(tables.size(), failures > 0 ? 0 : 9);
        EXPECT_EQ(said.isEmpty(), failures == 0) << qPrintable(said.join(u'\n'));
        expectThatWorkGoesOn();
        if (HasFailure() || failures == 0)
            return;
    }
}

TEST_F(FailedCommands, OfWhatCouldNotBeListedTouchNothing) {
    const QStringList before = contentOf(user.path());
    for (const auto& [list, refused] :
         {std::pair<std::function<void()>, const char*>([&] { click("030101"); }, "frmEditor.LoadBill 5"),
          {[&] { user.typeQuery(u"0"_s), user.run(2, 202); }, "frmEditor.mnuQueryBill_Click 5"}}) {
        click("010101");
        {
            const Disturbance other(user.path(), Kind::Locked);
            EXPECT_EQ(messagesOf(list), QStringList{QString::fromLatin1(refused)});
        }
        EXPECT_FALSE(user.bills()->hasRows() || user.contents()->hasRows());
        EXPECT_EQ(messagesOf([this] { user.run(2, 201); }), QStringList());
        EXPECT_EQ(contentOf(user.path()), before);
    }
    user.run(2, 200);
    EXPECT_EQ(contentOf(user.path()), before);
    click("030101");
    expectWindowIsFile();
    // A row that another program took away: nothing is renumbered.
    click("010101");
    user.click(user.bills(), 1, u"Name"_s);
    OtherProgram(user.path()).rows(u"DELETE FROM tblBill WHERE ID="_s + user.bills()->text(1, u"id"_s));
    const QStringList without = contentOf(user.path());
    EXPECT_EQ(messagesOf([&] { user.run(2, 201); }), QStringList());
    EXPECT_EQ(contentOf(user.path()), without);
    expectThatWorkGoesOn();
    // A chapter that another program has added, and that the tree does not show yet.
    OtherProgram(user.path()).run("INSERT INTO tblSYB(Code,Name) VALUES('0501','theirs'),('06','theirs')");
    const QStringList theirs = rowsInFile(user.path(), "SELECT * FROM tblSYB");
    for (const int command : {101, 100}) {
        click("05");
        EXPECT_EQ(messagesOf([&] { user.run(1, command); }), QStringList{u"提示: 目录编号已经存在!"_s});
        EXPECT_EQ(rowsInFile(user.path(), "SELECT * FROM tblSYB"), theirs);
    }
}
