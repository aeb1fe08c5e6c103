// Every command that writes, failing in every way: the error is told, window and file are as they were, and what is
// done next is in the file as soon as it is done. Where a part is meant to stay that was done before the error, that
// part is in the file at once.

#include "tests/faults/Workplace.h"

namespace {

class FailedCommands : public Workplace {
protected:
    void restore(const Command& command) {
        if (bytesOf(path) != library) {
            user.close();
            overwrite(path, library);
        }
        user.editor() ? click(command.chapter) : reopen(command.chapter);
        user.bills()->setRow(0);
        if (command.before)
            command.before();
    }

    /// Does the command where something fails, which `disturbed` brings about; gives what was said.
    QStringList expectNoTrace(const Command& command, const std::function<QStringList()>& disturbed) {
        static const QRegularExpression reading(
            u"^frmEditor\\.(CreateTvwSYB|Load\\w+|ListBillData|ExecuteDDL|grdBillList_AfterRowColChange) 10$"_s);
        restore(command);
        const QStringList before = contentOf(path);
        const std::string shownBefore = shown();
        QStringList said = disturbed();
        // What was held up is committed with the next event.
        EditorDriver::settle();
        EXPECT_EQ(integrityOf(path), u"ok"_s);
        const bool done = contentOf(path) != before;
        EXPECT_TRUE(done || !said.isEmpty()) << "it failed and nobody said so";
        EXPECT_TRUE(done || command.left != Command::Nothing || shown() == shownBefore) << shown();
        // Of a command that was done, what it leads to may be unreadable.
        EXPECT_TRUE(!done || command.left == Command::WhatWasDone || said.filter(reading) == said);
        expectThatWorkGoesOn();
        EXPECT_FALSE(QFile::exists(path + u"-journal"_s)) << "something is uncommitted";
        return said;
    }

    const QByteArray library = bytesOf(path);
    const std::vector<Command> all = commands();
};

}  // namespace

TEST_F(FailedCommands, LeaveNoTraceWhoeverStandsInTheirWay) {
    using enum Disturbance::Kind;
    for (const Disturbance::Kind kind : {Refused, Read, Written, Locked}) {
        for (const Command& command : all) {
            SCOPED_TRACE(testing::Message() << command.place << ", kind " << static_cast<int>(kind));
            const QStringList said = expectNoTrace(command, [&] {
                const Disturbance other(path, kind, QString::fromLatin1(command.refused), user.editor());
                return messagesOf(command.act);
            });
            const bool refused = kind == Refused && said == QStringList{QString::fromLatin1(command.place) + u" 19"_s};
            ASSERT_TRUE(refused || (kind != Refused && tellsError(said, "5"))) << qPrintable(said.join(u'\n'));
            ASSERT_FALSE(HasFailure());
        }
    }
}

TEST_F(FailedCommands, LeaveNoTraceWhereverTheDiskFails) {
    using Disk = FaultyDisk;
    Disk::Fault faults[] = {
        {.kinds = Disk::Write, .lasting = true, .full = true, .onlyGrowth = true},
        {.kinds = Disk::Write, .lasting = true, .full = true},
        {.kinds = Disk::Changes},
        {.kinds = Disk::Changes, .lasting = true},
        {.kinds = Disk::Sync},
        {.kinds = Disk::Read},
        {.kinds = Disk::Read, .lasting = true},
    };
    int failed = 0;
    for (std::size_t number = 0; number < all.size(); ++number) {
        const Command& command = all[number];
        restore(command);
        disk.relieve();
        EXPECT_EQ(messagesOf(command.act), QStringList());
        const auto counts = disk.counts();
        for (int at = 1; at <= qMax(counts.changes, counts.reads); ++at) {
            const std::size_t fault = (number + static_cast<std::size_t>(at)) % std::size(faults);
            if (at > (faults[fault].kinds & Disk::Read ? counts.reads : counts.changes))
                continue;
            SCOPED_TRACE(testing::Message()
                         << command.place << ' ' << command.refused << ", fault " << fault << " at operation " << at);
            bool fails = false;
            expectNoTrace(command, [&] {
                faults[fault].at = at;
                disk.set(faults[fault]);
                const QStringList said = messagesOf(command.act);
                fails = disk.counts().failures > 0;
                disk.relieve();
                EXPECT_TRUE(fails || said.isEmpty());
                return said;
            });
            failed += fails ? 1 : 0;
            ASSERT_FALSE(HasFailure());
        }
    }
    EXPECT_GT(failed, 200);
    counted(u"commands that a disk failed"_s, failed);
}

TEST_F(FailedCommands, ALibraryThatCannotBeMadeLeavesNothing) {
    const QString made = dataPath + u"made.bdb"_s;
    for (qint64 at = 1, failures = 1; failures > 0 && !HasFailure(); ++at) {
        SCOPED_TRACE(at);
        disk.set({.kinds = FaultyDisk::Write | FaultyDisk::Sync, .at = at, .lasting = true});
        const QStringList said = enter(256, "txtFileName", u"made"_s);
        failures = disk.counts().failures;
        disk.relieve();
        EXPECT_EQ(QFile::exists(made), failures == 0);
        EXPECT_EQ(said.isEmpty(), failures == 0) << qPrintable(said.join(u'\n'));
        if (failures == 0)
            user.close();
        expectThatWorkGoesOn();
    }
}

TEST_F(FailedCommands, ChaptersThatAnotherProgramHasAddedKeepTheirCodes) {
    OtherProgram(path).run("INSERT INTO tblSYB(Code,Name) VALUES('0501','theirs'),('06','theirs')");
    for (const int command : {101, 100}) {
        click("05");
        EXPECT_EQ(messagesOf([&] { user.run(1, command); }), QStringList());
    }
    EXPECT_EQ(rowsInFile(path, "SELECT Code FROM tblSYB WHERE Name='新' ORDER BY ID"),
              QStringList({u"0502"_s, u"07"_s}));
}
