// A disk that fills up or fails, at every single operation of a renumbering: the command fails and says so, nothing of
// it is in the file or in the window, what was done before is, and work goes on when the disk works again.

#include <QRegularExpression>

#include "app/base/Text.h"
#include "storage/LibraryConnection.h"
#include "tests/support/Libraries.h"
#include "tests/faults/Workplace.h"
#include "tests/support/Extent.h"
#include "tests/support/FaultyDisk.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

/// At length, a chapter whose renumbering takes many pages.
QString library() {
    const QString path = awkwardLibrary();
    const auto connection = GetOrmConn(path);
    connection->Execute("BEGIN");
    for (int number = 10; number < extent(10, 160); ++number) {
        const QString code = u"010101"_s + zeroPadded(number, 3);
        connection->Execute(sql("INSERT INTO tblBill(Code,Name,Unit,IsDel) VALUES('", code, "','清单','m',0)"));
        connection->Execute(sql("INSERT INTO tblCont(Code,Num,Cont,Prof,BillID) VALUES('", code, "',1,'First','01',",
                                connection->LastInsertId(), ")"));
    }
    connection->Execute("COMMIT");
    return path;
}

struct WithDisk {
    FaultyDisk disk;
};

class DiskFaults : public WithDisk, public Workplace {
protected:
    DiskFaults() : Workplace(library()) { user.pragma("PRAGMA synchronous=FULL"); }

    using Fault = std::function<void(int at)>;

    /// Lets `fault` happen at every operation of `command`, one after the other.
    void sweep(const std::function<void()>& command, const Fault& fault, int first);

    void openAnew() {
        reopen();
        // The chapters may have changed places.
        const SqlText longest =
            "SELECT substr(Code,1,6) FROM tblBill WHERE Code LIKE '0101_____' GROUP BY 1 ORDER BY count(*) DESC";
        click(rowsInFile(user.path(), longest).value(0).toLatin1());
        user.pragma("PRAGMA synchronous=FULL");
    }

    int cases = 0;
    int failed = 0;
    int injected = 0;
};

void DiskFaults::sweep(const std::function<void()>& command, const Fault& fault, int first) {
    // Of a command that was done, what it leads to may be unreadable.
    static const QRegularExpression reading(u"^frmEditor\\.(CreateTvwSYB|Load\\w+|ListBillData) 10$"_s);
    const int step = extent(8, 1);
    QStringList before = contentOf(user.path());
    for (int at = 1 + first % step; at < 5000; at += step) {
        SCOPED_TRACE(testing::Message() << "operation " << at);
        fault(at);
        const QStringList said = messagesOf(command);
        const auto failures = static_cast<int>(disk.failures());
        disk.relieve();
        ++cases;
        injected += failures;
        failed += said.isEmpty() ? 0 : 1;
        EXPECT_TRUE(said.isEmpty() || failures > 0) << qPrintable(said.join(u'\n'));
        const bool done = contentOf(user.path()) != before;
        EXPECT_TRUE(done == said.isEmpty() || (done && said.filter(reading) == said)) << qPrintable(said.join(u'\n'));
        EXPECT_EQ(integrityOf(user.path()), u"ok"_s);
        if (done && !said.isEmpty())
            openAnew();
        // First: a journal that could not even be begun, nor removed, goes with the next edit.
        expectThatWorkGoesOn();
        expectWindowIsFile();
        if (HasFailure() || failures == 0) {
            EXPECT_TRUE(done);
            return;
        }
        before = contentOf(user.path());
    }
    ADD_FAILURE() << "the command has no end";
}

}  // namespace

TEST_F(DiskFaults, AtEveryOperationOfARenumbering) {
    const auto onBill = [this](int row, int id) {
        return [this, row, id] {
            user.bills()->setRow(row);
            user.run(2, id);
        };
    };
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"swap chapters", [this] { user.run(1, user.isEnabled(1, 105) ? 105 : 104); }},
        {"move a bill", onBill(1, 105)},
        {"add a bill at the top", onBill(0, 200)},
        {"delete the first bill", onBill(0, 201)},
    };
    using Kind = FaultyDisk::Kind;
    const auto fail = [this](unsigned kinds, bool lasting) {
        return [this, kinds, lasting](int at) { disk.failAt(at, kinds, lasting); };
    };
    const std::pair<const char*, Fault> faults[] = {
        {"full", [this](int at) { disk.becomeFullAt(at, false); }},
        {"full, old blocks too", [this](int at) { disk.becomeFullAt(at, true); }},
        {"fails once", fail(Kind::Changes, false)},
        {"fails from then on", fail(Kind::Changes, true)},
        {"one sync fails", fail(Kind::Sync, false)},
        {"one read fails", fail(Kind::Read, false)},
        {"reads fail from then on", fail(Kind::Read, true)},
    };
    int sweeps = 0;
    for (const auto& [fault, inject] : faults) {
        for (const auto& [name, command] : commands) {
            SCOPED_TRACE(testing::Message() << fault << ", " << name);
            sweep(command, inject, sweeps++);
            if (HasFailure())
                return;
        }
    }
    const QString figures = u"disk faults: %1 sweeps, %2 commands, %3 of them failed, %4 operations failed"_s;
    reportFigures(figures.arg(sweeps).arg(cases).arg(failed).arg(injected));
}
