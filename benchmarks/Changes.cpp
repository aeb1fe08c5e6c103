#include "benchmarks/Changes.h"

#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"
#include "storage/LibraryConnection.h"

namespace {

/// A copy in the state in which the action is taken.
class PreparedCopy {
public:
    PreparedCopy(int bills, const Change& change) : m_copy(bills) {
        if (change.prepare) {
            PlainDatabase file(path());
            change.prepare(file);
        }
    }

    const QString& path() const { return m_copy.path(); }

private:
    LibraryCopy m_copy;
};

// Both sides have the schema in memory before they start.
constexpr char readSchema[] = "SELECT count(*) FROM tblSYB;";

double runOurs(const Change& change, const QString& path, bool& done) {
    const std::unique_ptr<Connection> library = GetOrmConn(path);
    library->OpenRecordset(readSchema).Close();
    return milliseconds([&] { done = change.ours(library.get()); });
}

double runPlain(const Change& change, const QString& path) {
    PlainDatabase library(path);
    library.prepare(readSchema).readAll();
    return milliseconds([&] { change.plain(library); });
}

}  // namespace

void compareChange(benchmark::State& state, const Change& change, const Limit& limit) {
    const int bills = static_cast<int>(state.range(0));
    bool done = true;
    {
        const PreparedCopy ours(bills, change);
        const PreparedCopy plain(bills, change);
        runOurs(change, ours.path(), done);
        runPlain(change, plain.path());
        const QString found = difference(ours.path(), plain.path());
        if (!done || !found.isEmpty()) {
            state.SkipWithError(done ? qPrintable(found + QStringLiteral(" differs")) : "not done");
            return;
        }
    }
    const Side ours = [&] { return runOurs(change, PreparedCopy(bills, change).path(), done); };
    const Side plain = [&] { return runPlain(change, PreparedCopy(bills, change).path()); };
    compare(state, ours, plain, limit);
    if (!done)
        state.SkipWithError("not done");
}
