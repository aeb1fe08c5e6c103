#include "benchmarks/start/Starts.h"

#include <QCoreApplication>
#include <QProcess>
#include <cstdio>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/Measuring.h"
#include "benchmarks/start/PeakMemory.h"

using namespace Qt::StringLiterals;

namespace {

/// Runs a program that prints its peak memory.
Start started(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment) {
    constexpr int patience = 120'000;
    QProcess process;
    process.setProcessEnvironment(environment);
    Start result;
    QByteArray printed;
    result.milliseconds = milliseconds([&] {
        process.start(program, arguments);
        if (process.waitForReadyRead(patience))
            printed = process.readLine();
    });
    if (!process.waitForFinished(patience) || printed.trimmed().isEmpty())
        throw Error(51, u"%1 shows no window: %2"_s.arg(program, process.errorString()));
    result.megabytes = printed.toDouble() / 1024;
    return result;
}

Start firstWindow(const char* program, const QStringList& arguments) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"firstwindow"_s);
    environment.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(TESSEL_PROBE_FOLDER));
    // The user's own settings are out of reach.
    environment.insert(u"XDG_CONFIG_HOME"_s, appPath);
    if (environment.contains(u"DISPLAY"_s))
        environment.remove(u"QT_QPA_PLATFORM"_s);
    return started(QString::fromUtf8(program), arguments, environment);
}

/// Most memory of an editor window in a process of its own that was used.
double memoryAfterUse(const QString& library) {
    return started(QCoreApplication::applicationFilePath(), {QLatin1String(useOption), library},
                   QProcessEnvironment::systemEnvironment())
        .megabytes;
}

}  // namespace

Start startEditor(const QStringList& arguments) { return firstWindow(TESSEL_EDITOR, arguments); }

Start startEmptyWindow() { return firstWindow(TESSEL_EMPTY_WINDOW, {}); }

void useLibrary(const QString& library) {
    EditorWindow window(library);
    window.clickChapters(100);
    window.search(u"0"_s);
    constexpr int shown = 200;
    for (int bill = 0; bill < shown; ++bill) {
        window.press("grdBillList", Qt::Key_Down);
        EditorWindow::settle();
    }
    std::printf("%ld\n", peakMemory());
}

void printMemory() {
    const auto row = [](const QString& what, double megabytes) {
        std::printf("| %s | %.1f |\n", qPrintable(what), megabytes);
    };
    std::printf("\n## Memory\n\n| peak of a process | MB |\n| --- | ---: |\n");
    row(u"an empty Qt window"_s, startEmptyWindow().megabytes);
    row(u"the editor, no library"_s, startEditor().megabytes);
    for (const int bills : {600, 6000, 60000}) {
        const QString library = generatedLibrary(bills);
        row(u"a library of %1 bills open"_s.arg(bills), startEditor({library}).megabytes);
        row(u"100 chapters clicked, all bills listed, 200 shown in detail"_s, memoryAfterUse(library));
    }
}
