#include <QCoreApplication>
#include <QTextStream>

#include "app/base/Definitions.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "samples/builder/SampleBuilder.h"

using namespace Qt::StringLiterals;

/// tessel_samples [--force] <source folder> <bill library>
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    appPath = withSeparator(programFolder());
    dataPath = withSeparator(appPath + u"Data"_s);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool force = arguments.removeAll(u"--force"_s) > 0;
    QTextStream errors(stderr);
    if (arguments.size() != 2) {
        errors << "usage: tessel_samples [--force] <source folder> <bill library>\n";
        return 2;
    }
    return guarded(
        {"tessel_samples", "main"},
        [&] {
            const SampleResult result = buildSamples(arguments[0], arguments[1], force);
            for (const QString& line : result.complaints + result.notes)
                errors << line << '\n';
            return result.complaints.isEmpty() ? 0 : 1;
        },
        [] { return 1; });
}
