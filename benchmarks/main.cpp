#include <benchmark/benchmark.h>

#include <QApplication>
#include <QSettings>

#include "app/base/Definitions.h"
#include "benchmarks/Comparison.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/start/Starts.h"

using namespace Qt::StringLiterals;

/// Prints the tables of all actions and of memory; --memory prints the second alone, and Google Benchmark's options
/// choose among the actions (--benchmark_filter=REGEX). Gives 1
/// when an action costs more than it may.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    makeProgramFolder();
    // The user's own settings are out of reach.
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, appPath);

    failOnMessages();
    if (argc == 3 && QLatin1String(argv[1]) == QLatin1String(useOption)) {
        useLibrary(QString::fromLocal8Bit(argv[2]));
        return 0;
    }
    if (argc == 2 && QLatin1String(argv[1]) == u"--memory"_s) {
        printMemory();
        return 0;
    }
    registerStart();
    registerStorage();
    registerViews();
    registerChapters();
    registerBills();
    registerFeatures();
    registerContents();
    registerRations();

    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    if (benchmark::GetBenchmarkFilter().empty())
        printMemory();
    return reporter.missed() == 0 ? 0 : 1;
}
