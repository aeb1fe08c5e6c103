#include "benchmarks/Changes.h"

#include "benchmarks/EditorWindow.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

// Both sides have the schema in memory before they start.
constexpr char readSchema[] = "SELECT count(*) FROM tblSYB;";

double runPlain(const Change& change, const QString& path) {
    PlainDatabase library(path);
    library.prepare(readSchema).readAll();
    return milliseconds([&] {
        change.plain(library);
        if (change.shown)
            change.shown(library);
    });
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
    const LibraryCopy prepared(generatedLibrary(static_cast<int>(state.range(0))));
    if (change.prepare) {
        PlainDatabase file(prepared.path());
        change.prepare(file);
    }
    const LibraryCopy oursCopy(prepared.path());
    const LibraryCopy plainCopy(prepared.path());
    change.ours(oursCopy.path());
    runPlain(change, plainCopy.path());
    const QString found = difference(oursCopy.path(), plainCopy.path());
    if (!found.isEmpty()) {
        state.SkipWithError(qPrintable(found + u" differs"_s));
        return;
    }
    compare(
        state,
        [&] {
            oursCopy.restore();
            return change.ours(oursCopy.path());
        },
        [&] {
            plainCopy.restore();
            return runPlain(change, plainCopy.path());
        },
        limit);
}
