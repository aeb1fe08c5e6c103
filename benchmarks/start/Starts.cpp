#include "benchmarks/start/Starts.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTreeWidgetItemIterator>
#include <cstdio>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/controls/KeyedGrid.h"
#include "benchmarks/Comparison.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/start/PeakMemory.h"
#include "editor/bills/BillPane.h"
#include "editor/chapters/ChapterPane.h"

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

}  // namespace

Start startEditor(const QStringList& arguments) { return firstWindow(TESSEL_EDITOR, arguments); }

Start startEmptyWindow() { return firstWindow(TESSEL_EMPTY_WINDOW, {}); }

double memoryAfterUse(const QString& library) {
    return started(QCoreApplication::applicationFilePath(), {QLatin1String(useOption), library},
                   QProcessEnvironment::systemEnvironment())
        .megabytes;
}

void useLibrary(const QString& library) {
    EditorWindow window(library);
    ChapterPane* chapters = window->chapterPane();
    constexpr int clicked = 100;
    QTreeWidgetItemIterator node(chapters->tvSYB());
    for (int count = 0; *node && count < clicked; ++count, ++node)
        chapters->tvSYB_NodeClick(*node);
    
    window->billPane()->mnuQueryBill_Click(u"0"_s);
    constexpr int shown = 200;
    for (int bill = 0; bill < shown; ++bill) {
        pressKey(window->billPane()->grdBillList(), Qt::Key_Down);
        QCoreApplication::processEvents();
    }
    std::printf("%ld\n", peakMemory());
}
