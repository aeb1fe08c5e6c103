#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "benchmarks/Comparison.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/contents/RationLookup.h"

namespace {

const QString lastRation = QStringLiteral("a500-40");

void lookRationUp(benchmark::State& state) {
    const QString library = QString::fromLatin1(largeRationLibrary);
    bool found = true;
    const auto ours = [&] {
        return milliseconds([&] {
            QString name, unit;
            found = GetDeData(lastRation, GetDekFilePath(library), name, unit) && found;
        });
    };
    const QString path = GetDekFilePath(library);
    const auto plain = [&] {
        return milliseconds([&] {
            PlainDatabase file(path);
            PlainStatement query = file.prepare("SELECT * FROM DEB WHERE DEH=? COLLATE NOCASE");
            query.bindAll(lastRation);
            query.readAll();
        });
    };
    ours();
    compare(state, ours, plain, {0, 5, "<= 5 ms"});
    if (!found)
        state.SkipWithError("not found");
}

}  // namespace

void registerRations() { forOneSize("Look a typed ration up, not the first", lookRationUp); }
