// The shipped program on a real display, killed while it is worked with as fast as it goes. What was shown is in the
// file afterwards, whole, and the program works on with it.
//
// The same seed gives the same work. One run is not killed and is judged at every step. It tells what the file held
// when; a killed run must have left one of these contents: that of the last step whose result was shown, or one from
// the step that had begun.

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <random>

#include "app/base/Paths.h"
#include "tests/kill/Orders.h"
#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"
#include "tests/support/Rations.h"
#include "tests/support/ShippedProgram.h"

namespace {

/// A display of its own with a window manager, gone with this object.
class VirtualDisplay {
public:
    VirtualDisplay() {
        // The server chooses a free number and writes it when it is ready; the manager says so by a command.
        m_server.start(u"Xvfb"_s, u"-displayfd 1 -screen 0 1600x1000x24 -nolisten tcp"_s.split(u' '));
        m_name = u':' + lastLine(m_server, "\n");
        m_windowManager.start(u"env"_s, {u"DISPLAY="_s + m_name, u"openbox"_s, u"--startup"_s, u"echo ready"_s});
        lastLine(m_windowManager, "ready\n");
    }
    ~VirtualDisplay() {
        for (QProcess* process : {&m_windowManager, &m_server}) {
            process->terminate();
            process->waitForFinished(-1);
        }
    }

    /// What lets a program use it.
    ShippedProgram::Variables variables() const { return {{u"DISPLAY"_s, m_name}, {u"QT_QPA_PLATFORM"_s, u"xcb"_s}}; }

private:
    /// Waits until the process has written `end`.
    static QString lastLine(QProcess& process, const QByteArray& end) {
        QByteArray said;
        while (!said.endsWith(end) && process.waitForReadyRead(-1))
            said += process.readAllStandardOutput();
        EXPECT_TRUE(said.endsWith(end)) << qPrintable(process.errorString());
        return QString::fromLatin1(said.trimmed().split('\n').constLast());
    }

    QProcess m_server;
    QProcess m_windowManager;
    QString m_name;
};

class Killed : public ::testing::Test {
protected:
    void begin(unsigned seed) {
        QString (*const libraries[])() = {sampleCopy, awkwardLibrary, libraryAtTheLimits};
        orders.library = libraries[seed % std::size(libraries)]();
        orders.journal = joinPath(folder.path(), u"journal"_s);
        orders.seed = seed;
        good = bytesOf(orders.library);
        random.seed(seed);
    }

    QString sideFile() const { return orders.library + u"-journal"_s; }

    std::unique_ptr<ShippedProgram> start(const Orders& with) { return start(with, display); }
    static std::unique_ptr<ShippedProgram> start(const Orders& with, const VirtualDisplay& on) {
        QFile::remove(with.journal);
        return std::make_unique<ShippedProgram>(
            QStringList{with.library},
            on.variables() + ShippedProgram::Variables{{u"QT_PLUGIN_PATH"_s, QStringLiteral(TESSEL_PLUGINS)},
                                                       {u"QT_QPA_GENERIC_PLUGINS"_s, u"user"_s},
                                                       // Another user's program does not know of this one.
                                                       {u"XDG_CONFIG_HOME"_s, with.journal + u".config"_s},
                                                       {QLatin1String(Orders::variable), with.toText()}});
    }

    /// Lets the program do all that was ordered, where nothing may be wrong.
    Journal whole(const Orders& with) { return endOf(*start(with), with); }

    static Journal endOf(ShippedProgram& program, const Orders& with) {
        const bool ended = program.waitForEnd();
        const Journal journal(with.journal);
        EXPECT_EQ(journal.said[u"wrong"_s], QStringList());
        EXPECT_TRUE(ended && journal.said.contains(u"done"_s)) << qPrintable(program.lastWords().right(4000));
        return journal;
    }

    /// Kills the program inside one of its steps, or when `endAt` is given at this change of a file, and checks what it
    /// left. A program that had done everything by then must have left just that.
    void kill(const Journal& reference, qint64 endAt) {
        overwrite(orders.library, good);
        Orders with = orders;
        with.endAt = endAt;
        const std::size_t step = 1 + random() % static_cast<unsigned>(orders.steps);
        {
            const auto program = start(with);
            program->waitUntil([&] { return endAt == 0 && Journal(with.journal).begun() >= step; });
        }
        const Journal journal(with.journal);
        SCOPED_TRACE(testing::Message() << "killed at change " << endAt << ", shown " << journal.ended() << ", begun "
                                        << journal.begun());
        EXPECT_EQ(journal.said[u"wrong"_s], QStringList());
        EXPECT_GT(journal.begun(), 0);
        ++kills;
        insideStep += journal.begun() > journal.ended() ? 1 : 0;
        insideTransaction += QFileInfo(sideFile()).size() > 0 ? 1 : 0;
        checkFile(reference, journal);
    }

    void checkFile(const Journal& reference, const Journal& journal) {
        EXPECT_EQ(rowsInFile(orders.library, "PRAGMA integrity_check"), QStringList{u"ok"_s});
        QStringList allowed;
        for (std::size_t step = 0; step <= journal.ended(); ++step)
            if (!reference.contents[step].isEmpty())
                allowed = {reference.contents[step].last()};
        if (journal.begun() > journal.ended())
            allowed << reference.contents[journal.begun()];
        const QString content = digestOf(orders.library);
        EXPECT_TRUE(allowed.contains(content)) << "what is left was never there";
        // A side file that is still there had not been begun in earnest: nothing depends on it. The next change would
        // take it over.
        QFile::remove(sideFile());
        EXPECT_EQ(digestOf(orders.library), content);
        EXPECT_EQ(rowsInFile(orders.library, "SELECT name FROM sqlite_schema WHERE type<>'table'"), QStringList());
    }

    const Rations installed;
    VirtualDisplay display;
    QTemporaryDir folder;
    Orders orders;
    QByteArray good;
    std::mt19937 random;
    int kills = 0;
    int insideStep = 0;
    int insideTransaction = 0;
};

/// What finds no row in a library that is whole.
const char* const faults[] = {
    "SELECT Code FROM tblBill GROUP BY Code HAVING count(*)>1",
    "SELECT Code FROM tblSYB GROUP BY Code HAVING count(*)>1",
    "SELECT substr(Code,1,6) AS c FROM tblBill GROUP BY c HAVING max(Code)<>c||printf('%03d',count(*))",
    "SELECT BillID FROM tblCont GROUP BY BillID HAVING min(Num)<>1 OR max(Num)<>count(*)",
    "SELECT BillID FROM tblCont GROUP BY BillID,Num HAVING count(*)>1",
    "SELECT ContID,SubNum FROM tblContDe GROUP BY ContID,SubNum HAVING count(DISTINCT SubCont)>1",
    "SELECT c.ID FROM tblCont c JOIN tblBill b ON b.ID=c.BillID WHERE c.Code<>b.Code",
    "SELECT ID FROM tblCont WHERE BillID NOT IN (SELECT ID FROM tblBill)",
    "SELECT ID FROM tblContDe WHERE ContID NOT IN (SELECT ID FROM tblCont)",
    "SELECT ID FROM tblBillSpec WHERE BillID NOT IN (SELECT ID FROM tblBill)",
    "SELECT ID FROM tblSpecEnum WHERE SpecID NOT IN (SELECT ID FROM tblBillSpec)",
    "SELECT ID FROM tblParm WHERE BillID NOT IN (SELECT ID FROM tblBill)",
};

/// Of all recorded errors those that have no reason: the other one was quicker, or a text had an apostrophe in it.
QStringList unforeseenErrors(const QString& log) {
    QStringList records = QString::fromUtf8(bytesOf(log)).split(QString(80, u'='));
    records.removeIf([](const QString& record) {
        return !record.contains(u"错误号码"_s) || record.contains(u"错误号码: 5\r"_s) || record.contains(u"单引号"_s);
    });
    return records;
}

}  // namespace

// Two users, each with a process and a display, work on one library at the same time.
TEST_F(Killed, TwoUsersDoNoHarmToEachOther) {
    const QString log = joinPath(programFolder(), u"Error.log"_s);
    const VirtualDisplay otherDisplay;
    const VirtualDisplay* const displays[] = {&display, &otherDisplay};
    qint64 noticed = 0, named = 0;
    repeated(2, [&](unsigned seed) {
        QFile::remove(log);
        const QTemporaryDir here;
        const QString path = sampleCopy();
        OtherProgram library(path);
        library.run("PRAGMA busy_timeout=60000");
        // In a small library they get into each other's way.
        library.run("DELETE FROM tblSYB WHERE Code NOT IN ('01','0104','010401','010403','04','0402','040203')");
        std::vector<Orders> each;
        std::vector<std::unique_ptr<ShippedProgram>> programs;
        for (const VirtualDisplay* on : displays) {
            const auto number = static_cast<unsigned>(each.size());
            each.push_back({.library = path,
                            .journal = joinPath(here.path(), QString::number(number)),
                            .seed = 2 * seed + number,
                            .steps = 60,
                            .go = joinPath(here.path(), u"go"_s)});
            programs.push_back(start(each.back(), *on));
        }
        for (const int part : {0, 1, 2}) {
            for (const std::size_t one : {0U, 1U})
                if (!programs[one]->waitUntil(
                        [&] { return Journal(each[one].journal).said[u"rest"_s].size() == part + 1; }))
                    return (void)endOf(*programs[one], each[one]);
            for (const char* fault : faults)
                EXPECT_EQ(library.rows(QLatin1String(fault)), Rows()) << fault;
            // What a third one writes both must notice.
            if (part == 2)
                library.run("UPDATE tblSYB SET Name=Name||'…'");
            overwrite(each[0].go + QString::number(part), {});
        }
        for (const std::size_t one : {0U, 1U}) {
            Journal journal = endOf(*programs[one], each[one]);
            QMap<QString, QString> names;
            for (const QString& line : journal.said[u"named"_s])
                names[line.section(u' ', 0, 0)] = line.section(u' ', 1);
            for (auto name = names.begin(); name != names.end(); ++name)
                EXPECT_EQ(library.run("SELECT Name FROM tblBill WHERE ID=?", {name.key()}), QStringList{*name});
            const QStringList said = journal.said[u"said"_s];
            EXPECT_TRUE(!said.isEmpty() && said.last().startsWith(u"另一个程序修改了"_s));
            noticed += said.filter(u"另一个程序修改了"_s).size();
            named += names.size();
        }
        EXPECT_EQ(library.run("PRAGMA integrity_check"), QStringList{u"ok"_s});
        EXPECT_EQ(unforeseenErrors(log), QStringList());
    });
    EXPECT_GT(named, 0);
    counted(u"changes of another user noticed"_s, noticed);
    counted(u"names given beside another user"_s, named);
}

TEST_F(Killed, LosesNothing) {
    repeated(2, [this](unsigned seed) {
        begin(seed);
        orders.steps = 40;
        Orders checked = orders;
        checked.checked = true;
        const Journal reference = whole(checked);
        const QString end = digestOf(orders.library);
        overwrite(orders.library, good);
        const Journal journal = whole(orders);
        EXPECT_EQ(digestOf(orders.library), end) << "the same seed must give the same work";
        const qint64 changes = journal.said[u"changes"_s].value(0).toLongLong();
        ASSERT_GT(changes, 0);
        for (int number = 0; number < 6 && !HasFailure(); ++number)
            kill(reference, number % 2 == 0 ? 0 : 1 + static_cast<qint64>(random()) % changes);
        // The program opens what was left and shows it, and everything goes on.
        checked.seed = seed + 1000;
        checked.steps = 5;
        whole(checked);
    });
    EXPECT_GT(insideTransaction, 0);
    counted(u"kills"_s, kills);
    counted(u"kills inside a step"_s, insideStep);
    counted(u"kills inside a transaction"_s, insideTransaction);
}
