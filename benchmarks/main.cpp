#include <QApplication>
#include <QSettings>
#include <cstdio>

#include "app/base/Definitions.h"
#include "benchmarks/Actions.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/start/Starts.h"

using namespace Qt::StringLiterals;

/// Prints what actions and starts cost and what memory they take, as Markdown. --memory prints memory alone; a regular
/// expression chooses actions by "name/bills". Gives 1 when an action costs more than it may.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString option = arguments.value(1);
    const QRegularExpression filter(option);
    if (!filter.isValid() ||
        (option.startsWith(u"-"_s) && option != u"--memory"_s && option != QLatin1String(useOption))) {
        std::fputs("usage: tessel_benchmarks [--memory | REGEX]\n", stderr);
        return 2;
    }
    makeProgramFolder();
    // The user's own settings are out of reach.
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, appPath);
    failOnMessages();
    if (option == QLatin1String(useOption)) {
        useLibrary(arguments.value(2));
        return 0;
    }
    int missed = 0;
    if (option != u"--memory"_s) {
        std::vector<MeasuredAction> actions = otherActions();
        for (const auto& more : {viewActions(), changeActions()})
            actions.insert(actions.end(), more.begin(), more.end());
        missed = measure(actions, filter);
    }
    if (option.isEmpty() || option == u"--memory"_s)
        printMemory();
    return missed == 0 ? 0 : 1;
}
