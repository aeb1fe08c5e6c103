#include <QCoreApplication>
#include <cstdio>

#include "app/base/Guarded.h"
#include "benchmarks/generator/LibraryGenerator.h"

using namespace Qt::StringLiterals;

/// Makes a bill library or a program folder with ration libraries for trying the program at size.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString kind = arguments.value(1);
    if (arguments.size() != 4 || (kind != u"bills"_s && kind != u"rations"_s)) {
        std::fputs(
            "usage: tessel_generate bills FILE.bdb BILLS\n"
            "       tessel_generate rations PROGRAM-FOLDER RATIONS\n",
            stderr);
        return 2;
    }
    const auto generate = kind == u"bills"_s ? generateLibrary : generateProgramFolder;
    const bool done = guarded({"tessel_generate", "main"}, [&] {
        generate(arguments[2], arguments[3].toInt());
        return true;
    });
    return done ? 0 : 1;
}
