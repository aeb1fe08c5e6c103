#include <QCoreApplication>
#include <QTextStream>

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "benchmarks/generator/LibraryGenerator.h"

using namespace Qt::StringLiterals;

/// Makes a bill library or a program folder with ration libraries for trying the program at size.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream out(stderr);
    const auto number = [&](int index, int usual) {
        return arguments.size() > index ? arguments[index].toInt() : usual;
    };
    const bool bills = arguments.size() > 2 && arguments[1] == u"bills"_s;
    const bool rations = arguments.size() > 2 && arguments[1] == u"rations"_s;
    if (!bills && !rations) {
        out << "usage: tessel_generate bills FILE.bdb [BILLS]\n"
               "       tessel_generate rations PROGRAM-FOLDER [RATIONS]\n";
        return 2;
    }
    const bool done = guarded({"tessel_generate", "main"}, [&] {
        if (bills)
            generateLibrary(arguments[2], shapeOf(number(3, 6000)));
        else
            generateProgramFolder(arguments[2], {number(3, 20000), 500});
        return true;
    });
    return done ? 0 : 1;
}
