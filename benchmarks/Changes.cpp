#include "benchmarks/Changes.h"

#include "benchmarks/EditorWindow.h"
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

double runPlain(const Change& change, const QString& path) {
    PlainDatabase library(path);
    library.prepare(readSchema).readAll();
    return milliseconds([&] { change.plain(library); });
}

}  // namespace

OursOn onConnection(std::function<void(Connection*)> act) {
    return [act = std::move(act)](const QString& path) {
        const std::unique_ptr<Connection> library = GetOrmConn(path);
        library->OpenRecordset(readSchema).Close();
        return milliseconds([&] { act(library.get()); });
    };
}

OursOn inEditor(std::function<double(EditorWindow&)> act) {
    return [act = std::move(act)](const QString& path) {
        EditorWindow window(path);
        window.listFullChapter();
        return act(window);
    };
}

void compareChange(benchmark::State& state, const Change& change, const Limit& limit) {
    const int bills = static_cast<int>(state.range(0));
    {
        const PreparedCopy ours(bills, change);
        const PreparedCopy plain(bills, change);
        change.ours(ours.path());
        runPlain(change, plain.path());
        const QString found = difference(ours.path(), plain.path());
        if (!found.isEmpty()) {
            state.SkipWithError(qPrintable(found + QStringLiteral(" differs")));
            return;
        }
    }
    compare(
        state, [&] { return change.ours(PreparedCopy(bills, change).path()); },
        [&] { return runPlain(change, PreparedCopy(bills, change).path()); }, limit);
}
