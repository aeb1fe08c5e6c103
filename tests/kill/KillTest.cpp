// The shipped program on a real display, killed while it is worked with as fast as it goes. What was shown is in the
// file afterwards, whole, and the program works on with it.
//
// The same seed gives the same work. One run is not killed and is checked at every step: against the independent model
// of codes, and the window against a fresh load of the file. It tells what the file held when; a killed run must have
// left one of these contents: that of the last step whose result was shown, or one from the step that had begun.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <random>

#include "storage/LibraryConnection.h"
#include "tests/kill/Content.h"
#include "tests/kill/Program.h"
#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Rations.h"

using namespace Qt::StringLiterals;

namespace {

struct Work {
    std::pair<std::string, QString (*)()> library;
    unsigned seed;
};

std::vector<Work> works() {
    const std::pair<std::string, QString (*)()> libraries[] = {
        {"Sample", sampleCopy}, {"Awkward", awkwardLibrary}, {"Limits", libraryAtTheLimits}};
    std::vector<Work> all;
    for (unsigned seed = 0; seed < static_cast<unsigned>(extent(2, 8)); ++seed)
        all.push_back({libraries[seed % std::size(libraries)], seed});
    return all;
}

/// A test prints this, not the bytes.
void PrintTo(const Work& work, std::ostream* out) { *out << work.library.first << " with seed " << work.seed; }

constexpr int patience = 300'000;

class Killed : public ::testing::TestWithParam<Work> {
protected:
    Killed() : m_library(GetParam().library.second()), m_random(GetParam().seed) {
        const Rations installed;
        QFile::remove(pristine());
        EXPECT_TRUE(QFile::copy(m_library, pristine()));
        m_orders.library = m_library;
        m_orders.seed = GetParam().seed;
        m_orders.steps = extent(40, 250);
    }

    QString pristine() const { return m_library + u".pristine"_s; }
    QString sideFile() const { return m_library + u"-journal"_s; }

    void renewLibrary() const {
        QFile::remove(sideFile());
        QFile::remove(m_library);
        EXPECT_TRUE(QFile::copy(pristine(), m_library));
    }

    /// Runs the program to its end, where nothing may be wrong.
    Journal whole(const Orders& orders) {
        Program program(m_display, orders);
        EXPECT_TRUE(program.waitForEnd(patience)) << "it hangs";
        const Journal journal = program.journal();
        EXPECT_TRUE(journal.done && journal.wrong.isEmpty()) << qPrintable(journal.wrong.join(u'\n')) << '\n'
                                                             << qPrintable(program.lastWords());
        return journal;
    }

    /// The run that is not killed, checked, and how long the same takes when nobody checks it.
    void runWhole() {
        Orders checked = m_orders;
        checked.checked = true;
        m_reference = std::make_unique<Journal>(whole(checked));
        const QString end = contentOf(m_library);
        renewLibrary();
        Program program(m_display, m_orders);
        ASSERT_TRUE(program.waitForWork());
        QElapsedTimer timer;
        timer.start();
        ASSERT_TRUE(program.waitForEnd(patience));
        m_duration = static_cast<int>(timer.elapsed());
        const Journal journal = program.journal();
        m_changes = journal.changes;
        EXPECT_TRUE(journal.done) << qPrintable(program.lastWords());
        EXPECT_EQ(contentOf(m_library), end) << "the same seed must give the same work";
    }

    /// Kills the program at an instant, or when `endAt` is given at this change of a file, and checks what it left.
    void runKilled(qint64 endAt) {
        renewLibrary();
        Orders orders = m_orders;
        orders.endAt = endAt;
        Program program(m_display, orders);
        ASSERT_TRUE(program.waitForWork()) << qPrintable(program.lastWords());
        const int instant = static_cast<int>(m_random() % static_cast<unsigned>(m_duration));
        EXPECT_TRUE(program.waitForEnd(endAt > 0 ? patience : instant) || endAt == 0) << "it hangs";
        program.kill();
        const Journal journal = program.journal();
        if (journal.done)
            return;
        SCOPED_TRACE(testing::Message() << "killed " << (endAt > 0 ? "at change " : "after ms ")
                                        << (endAt > 0 ? endAt : instant) << ", shown " << journal.ended << ", begun "
                                        << journal.begun);
        EXPECT_TRUE(journal.wrong.isEmpty()) << qPrintable(program.lastWords());
        Count& count = endAt > 0 ? m_atChange : m_atInstant;
        ++count.kills;
        count.steps += journal.ended;
        count.insideStep += journal.begun > journal.ended ? 1 : 0;
        count.insideTransaction += QFileInfo(sideFile()).size() > 0 ? 1 : 0;
        checkFile(journal);
    }

    void checkFile(const Journal& journal) {
        EXPECT_EQ(rowsInFile(m_library, "PRAGMA integrity_check"), QStringList{u"ok"_s});
        QStringList allowed;
        for (int step = 0; step <= journal.ended; ++step)
            if (!m_reference->contents[step].isEmpty())
                allowed = {m_reference->contents[step].last()};
        if (journal.begun > journal.ended)
            allowed << m_reference->contents[journal.begun];
        const QString content = contentOf(m_library);
        EXPECT_TRUE(allowed.contains(content)) << qPrintable(content) << "\nis none of\n"
                                               << qPrintable(allowed.join(u'\n'));
        // A side file that is still there had not been begun in earnest: nothing depends on it. The next change would
        // take it over.
        const QString alone = m_library + u".alone"_s;
        EXPECT_TRUE(QFile::copy(m_library, alone));
        EXPECT_EQ(contentOf(alone), content);
        QFile::remove(alone);
        QFile::remove(sideFile());
        EXPECT_EQ(rowsInFile(m_library, "SELECT name FROM sqlite_schema WHERE type<>'table'"), QStringList());
    }

    /// The program opens what was left and shows it, and everything goes on.
    void goOn() {
        Orders orders = m_orders;
        orders.seed = static_cast<unsigned>(m_random() % 1000);
        orders.steps = extent(3, 10);
        orders.checked = true;
        whole(orders);
    }

    VirtualDisplay m_display;
    QString m_library;
    std::mt19937 m_random;
    Orders m_orders;
    std::unique_ptr<Journal> m_reference;
    int m_duration = 1;
    qint64 m_changes = 1;
    struct Count {
        int kills = 0;
        int steps = 0;
        int insideStep = 0;
        int insideTransaction = 0;
    } m_atInstant, m_atChange;
};

}  // namespace

TEST_P(Killed, LosesNothing) {
    ASSERT_FALSE(m_display.name().isEmpty());
    runWhole();
    ASSERT_FALSE(HasFailure());
    const int kills = extent(6, 90);
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        const bool insideFileSystem = kill % 2 == 1;
        runKilled(insideFileSystem ? 1 + static_cast<qint64>(m_random()) % m_changes : 0);
        if (kill % 8 == 5 && !HasFailure())
            goOn();
    }
    for (const auto& [way, count] : {std::pair("at any instant", &m_atInstant), std::pair("at a change", &m_atChange)})
        reportFigures(u"killed %1, %2: %3 kills, %4 inside a step, %5 inside a transaction, %6 steps done"_s
                          .arg(QLatin1String(way), QString::fromStdString(GetParam().library.first))
                          .arg(count->kills)
                          .arg(count->insideStep)
                          .arg(count->insideTransaction)
                          .arg(count->steps));
}

INSTANTIATE_TEST_SUITE_P(At, Killed, ::testing::ValuesIn(works()),
                         [](const auto& work) { return work.param.library.first + std::to_string(work.param.seed); });
