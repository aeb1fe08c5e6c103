// The shipped program on a real display, killed while it is worked with as fast as it goes. What was shown is in the
// file afterwards, whole, and the program works on with it.
//
// The same seed gives the same work. One run is not killed and is judged at every step. It tells what the file held
// when; a killed run must have left one of these contents: that of the last step whose result was shown, or one from
// the step that had begun.

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
    Journal whole(const Orders& with) { return endOf(*start(with, display), with); }

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
            const auto program = start(with, display);
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
    int kills = 0, insideStep = 0, insideTransaction = 0;
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
        const QString go = joinPath(here.path(), u"go"_s);
        std::vector<std::pair<Orders, std::unique_ptr<ShippedProgram>>> users;
        for (const unsigned number : {0U, 1U}) {
            const Orders with{path, joinPath(here.path(), QString::number(number)), go, 2 * seed + number, 60};
            users.emplace_back(with, start(with, *displays[number]));
        }
        for (const int part : {0, 1, 2}) {
            for (const auto& user : users)
                if (!user.second->waitUntil(
                        [&] { return Journal(user.first.journal).said[u"rest"_s].size() == part + 1; }))
                    return (void)endOf(*user.second, user.first);
            for (const char* fault : faults)
                EXPECT_EQ(library.rows(QLatin1String(fault)), Rows()) << fault;
            // What a third one writes both must notice.
            if (part == 2)
                library.run("UPDATE tblSYB SET Name=Name||'…'");
            overwrite(go + QString::number(part), {});
        }
        for (const auto& [with, program] : users) {
            Journal journal = endOf(*program, with);
            std::map<QString, QString> names;
            for (const QString& line : journal.said[u"named"_s])
                names[line.section(u' ', 0, 0)] = line.section(u' ', 1);
            for (const auto& [id, name] : names)
                EXPECT_EQ(library.run("SELECT Name FROM tblBill WHERE ID=?", {id}), QStringList{name});
            const QString notice = u"另一个程序修改了"_s;
            EXPECT_TRUE(journal.said[u"said"_s].value(journal.said[u"said"_s].size() - 1).startsWith(notice));
            noticed += journal.said[u"said"_s].filter(notice).size();
            named += std::ssize(names);
        }
        EXPECT_EQ(library.run("PRAGMA integrity_check"), QStringList{u"ok"_s});
        // Errors have a reason: the other one was quicker, or a text had an apostrophe in it.
        QStringList errors = QString::fromUtf8(bytesOf(log)).split(QString(80, u'=')).filter(u"错误号码"_s);
        errors.removeIf([](const QString& e) { return e.contains(u"错误号码: 5\r"_s) || e.contains(u"单引号"_s); });
        EXPECT_EQ(errors, QStringList());
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
