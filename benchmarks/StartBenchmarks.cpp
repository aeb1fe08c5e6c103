#include <cstdio>

#include "benchmarks/Comparison.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/start/Starts.h"

using namespace Qt::StringLiterals;

namespace {

void compareStarts(benchmark::State& state, const QStringList& arguments, const Limit& limit) {
    compare(
        state, [&] { return startEditor(arguments).milliseconds; }, [] { return startEmptyWindow().milliseconds; },
        limit);
}

void startAlone(benchmark::State& state) { compareStarts(state, {}, {3, 0, "3 x plain", 1000}); }

/// The key of the system database, which lists the ration libraries, has to be derived once a process.
void startWithLibrary(benchmark::State& state) {
    compareStarts(state, {generatedLibrary(static_cast<int>(state.range(0)))}, {3, 300, "3 x plain + 300", 1000});
}

}  // namespace

void registerStart() {
    forOneSize("Start to first window", startAlone);
    forEverySize("Start with a library", startWithLibrary);
}

void printMemory() {
    const auto row = [](const char* what, double megabytes) { std::printf("| %-66s | %7.1f |\n", what, megabytes); };
    std::printf("\n| peak memory of a process | MB |\n| --- | ---: |\n");
    row("an empty Qt window", startEmptyWindow().megabytes);
    row("the editor, no library", startEditor().megabytes);
    for (const int bills : {600, 6000, 60000}) {
        const QString library = generatedLibrary(bills);
        row(qPrintable(u"a library of %1 bills open"_s.arg(bills)), startEditor({library}).megabytes);
        row("100 chapters clicked, all bills listed, 200 shown in detail", memoryAfterUse(library));
    }
}
