#include <gtest/gtest.h>

#include <QCoreApplication>

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "storage/LibraryConnection.h"
#include "storage/Savepoint.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

/// A command that leaves its savepoint open.
void failingCommand(const TemporaryLibrary& library, const SqlText& statement) {
    guarded({"frmEditor", "failing"}, [&] {
        EXPECT_TRUE(SetSP(u"failing"_s, library.connection()));
        library.run(statement);
    });
}

const SqlText codes = "SELECT code FROM tblSYB ORDER BY code";

}  // namespace

TEST(Leftovers, ThatCannotBeCommittedAreReportedOnceAndTriedAgain) {
    const TemporaryLibrary library;
    failingCommand(library, "INSERT INTO tblSYB(code,name) VALUES('01','x')");
    ModalAnswers answers;
    answers.closeAnything();
    {
        Connection reader;
        reader.Open(library.path(), QString(), 6);
        reader.Execute("BEGIN");
        const Recordset held = reader.OpenRecordset("SELECT * FROM sqlite_master");
        QCoreApplication::processEvents();
        for (int i = 0; i < 3; ++i) {
            guarded({"frmEditor", "another event"}, [] {});
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(answers.seen().size(), 1);
    }
    guarded({"frmEditor", "the next event"}, [] {});
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile(codes), QStringList{u"01"_s});
    EXPECT_EQ(answers.seen().size(), 1);
}
