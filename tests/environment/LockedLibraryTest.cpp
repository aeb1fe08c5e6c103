// Another program keeps a file to itself: whatever the user does is answered after one wait of two seconds, and the
// answer says why.

#include <QElapsedTimer>

#include "app/base/Definitions.h"
#include "storage/SystemDatabase.h"
#include "tests/environment/OtherProgram.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Disturbance.h"
#include "tests/gui/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"

namespace {

/// One wait for a lock, and a busy machine; two waits in a row would take longer.
constexpr qint64 patience = 3900;

class LockedLibrary : public Workplace {
protected:
    LockedLibrary() : Workplace(awkwardLibrary()) {}

    /// Does `act` while `path` is locked; gives what was said.
    QStringList whileLocked(const QString& path, Disturbance::Kind kind,
                            const std::function<void(ModalAnswers&)>& act) {
        QStringList said;
        {
            const Disturbance other(path, kind);
            said = timed(act);
        }
        EditorDriver::settle();
        return said;
    }

    /// Does `act`; gives what was said and takes the time from one word to the next.
    QStringList timed(const std::function<void(ModalAnswers&)>& act) {
        QElapsedTimer sinceLastWord;
        return messagesOf([&](ModalAnswers& answers) {
            answers.otherwise([&](QWidget* window) {
                longest = qMax(longest, sinceLastWord.restart());
                window->close();
            });
            sinceLastWord.start();
            act(answers);
            EditorDriver::settle();
            longest = qMax(longest, sinceLastWord.elapsed());
        });
    }

    void expectAnswers(const char* what, const QStringList& said, const char* expected) {
        EXPECT_TRUE(said.contains(QString::fromUtf8(expected)))
            << what << ": " << qPrintable(said.join(QLatin1Char('\n')));
        EXPECT_LT(longest, patience) << what;
    }

    qint64 longest = 0;
};

}  // namespace

TEST_F(LockedLibrary, IsAnsweredInTimeWhateverIsDone) {
    using Kind = Disturbance::Kind;
    const auto edit = [this](ModalAnswers&) {
        user.edit(user.bills(), 0, QStringLiteral("Name"), QStringLiteral("x"));
    };
    const auto run = [this](int host, int id) { return [this, host, id](ModalAnswers&) { user.run(host, id); }; };
    const QString path = user.path();
    const QString second = copyOfSampleLibrary(QStringLiteral("second.bdb"));

    expectAnswers("edit", whileLocked(path, Kind::Written, edit), "ModDBOperator.ExecuteDDL 5");
    expectWindowIsFile();
    expectAnswers("open", whileLocked(second, Kind::Locked, [&](ModalAnswers&) { user.window()->LoadBillDB(second); }),
                  "ModDBOperator.GetOrmConn 5");
    EXPECT_EQ(user.window()->editors().size(), 1);
    if (extent(0, 1)) {
        expectAnswers("edit, locked", whileLocked(path, Kind::Locked, edit), "ModDBOperator.ExecuteDDL 5");
        expectAnswers("edit, read", whileLocked(path, Kind::Read, edit), "ModDBOperator.ExecuteDDL 5");
        for (const Kind kind : {Kind::Written, Kind::Locked}) {
            expectAnswers("add", whileLocked(path, kind, run(2, 200)), "frmEditor.mnuAddBill_Click 5");
            expectAnswers("move", whileLocked(path, kind, run(2, 105)), "frmEditor.MoveBillRow 5");
            expectAnswers("swap", whileLocked(path, kind, run(1, 105)), "frmEditor.ExchangeSYBNode 5");
        }
        expectAnswers("add, read", whileLocked(path, Kind::Read, run(2, 200)), "ModDBOperator.ReleaseSP 5");
        expectAnswers("click", whileLocked(path, Kind::Locked, [this](ModalAnswers&) { click("010102"); }),
                      "frmEditor.LoadBill 5");
        click("010101");
        {
            OtherProgram other(appPath + QStringLiteral("tessel.dat"), systemKey);
            other.run("BEGIN EXCLUSIVE");
            expectAnswers("tessel.dat", timed([&](ModalAnswers&) { user.window()->LoadBillDB(second); }),
                          "frmEditor.GetDefDekID 5");
        }
        user.window()->commandBars()->execute(260);
        EditorDriver::settle();
    }
    expectThatWorkGoesOn();
    expectWindowIsFile();

    // Closing asks nothing of the file, so it does not wait.
    QElapsedTimer closing;
    closing.start();
    const Disturbance other(path, Kind::Locked);
    const ModalAnswers noMessages;
    user.close();
    EXPECT_LT(closing.elapsed(), 1000);
    reportFigures(QStringLiteral("locked files: longest wait for an answer %1 ms").arg(longest));
}
