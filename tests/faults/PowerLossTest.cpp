// The power goes at any change of a file: what was synced is on the disk, the rest is there, is not, or is there in
// part, and a deleted journal may come back. Opened anew, the library has every step that had been shown as done and
// nothing of the next one, or all of it.

#include "storage/LibraryConnection.h"
#include "tests/faults/Workplace.h"

namespace {

using Change = FaultyDisk::Change;
using Bytes = std::optional<QByteArray>;

void carryOut(const Change& change, Bytes& bytes) {
    if (change.kind == FaultyDisk::Delete)
        bytes.reset();
    else if (change.kind == FaultyDisk::Truncate)
        bytes->resize(change.at);
    if (change.kind != FaultyDisk::Write || change.data.isEmpty())
        return;
    if (!bytes)
        bytes.emplace();
    if (bytes->size() < change.at)
        bytes->resize(change.at, '\x5a');
    bytes->replace(change.at, change.data.size(), change.data);
}

/// One file: what is on the disk for sure, and what the system has been given since.
struct File {
    Bytes synced;
    std::vector<Change> since = {};

    void take(const Change& change) {
        since.push_back(change);
        if (change.kind != FaultyDisk::Sync && !change.folderToo)
            return;
        for (const Change& given : std::exchange(since, {}))
            carryOut(given, synced);
    }

    /// What may be found when the power is back.
    Bytes found(std::mt19937& dice) const {
        enum Fate { Lost, Whole, InPart, Garbage };
        const auto roll = [&](qsizetype sides) { return static_cast<qsizetype>(dice()) % sides; };
        Bytes bytes = synced;
        const auto mood = roll(4);  // nothing got there, all of it did, or it came as it came
        for (Change change : since) {
            const auto fate = mood < 2 ? mood : roll(4);
            if (fate == Lost) {
                if (change.kind == FaultyDisk::Delete)
                    break;  // what came later went into another file, which no folder knows
                continue;
            }
            if (change.kind == FaultyDisk::Write && fate == InPart) {
                const auto from = roll(change.data.size() + 1);
                change.data = change.data.mid(from, roll(change.data.size() + 1));
                change.at += from;
            } else if (change.kind == FaultyDisk::Write && fate == Garbage) {
                // A file may have grown without having got its content.
                const qsizetype size = bytes ? bytes->size() : 0;
                change.data = QByteArray(qMax(change.at + change.data.size() - size, 0), '\xa5');
                change.at = size;
            }
            carryOut(change, bytes);
        }
        return bytes;
    }
};

class PowerLoss : public Workplace {};

}  // namespace

TEST_F(PowerLoss, LosesNoStepThatWasShown) {
    const std::string library = QFile::encodeName(path).toStdString();
    std::vector<Change> changes;
    // Up to which change each step came, and what the library held then.
    std::vector<std::pair<std::size_t, QStringList>> shown{{0, contentOf(path)}};
    std::map<std::string, File> files{{library, {bytesOf(path)}}};
    disk.record(&changes);
    for (const Command& command : commands()) {
        click(command.chapter);
        user.bills()->setRow(0);
        EXPECT_EQ(messagesOf(command.act), QStringList());
        shown.emplace_back(changes.size(), contentOf(path));
    }
    disk.record(nullptr);

    const QTemporaryDir folder;
    const QString left = joinPath(folder.path(), u"left.bdb"_s);
    std::size_t done = 0;
    std::set<std::pair<std::size_t, QByteArray>> seen;
    for (std::size_t at = 0; at <= changes.size(); ++at) {
        if (at > 0)
            files[changes[at - 1].file].take(changes[at - 1]);
        while (done + 1 < shown.size() && shown[done + 1].first <= at)
            ++done;
        for (unsigned seed = 0; seed < 30; ++seed) {
            SCOPED_TRACE(testing::Message() << "change " << at << ", seed " << seed << ", steps shown " << done);
            std::mt19937 dice(seed);
            QByteArray all;
            for (const auto& [name, file] : files) {
                const QString part = left + QString::fromStdString(name.substr(library.size()));
                const Bytes bytes = file.found(dice);
                QFile::remove(part);
                if (bytes)
                    overwrite(part, *bytes);
                all += bytes.value_or("none");
            }
            if (!seen.insert({done, all}).second)
                continue;
            ASSERT_TRUE(GetOrmConn(left));
            const QStringList content = contentOf(left);
            ASSERT_EQ(integrityOf(left), u"ok"_s);
            ASSERT_TRUE(content == shown[done].second ||
                        (done + 1 < shown.size() && content == shown[done + 1].second));
        }
    }
    EXPECT_GT(seen.size(), 2000);
    counted(u"power lost, different disks found"_s, seen.size());
}
