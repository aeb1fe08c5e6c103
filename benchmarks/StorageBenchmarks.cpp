#include <QFile>

#include "app/base/Definitions.h"
#include "benchmarks/Comparison.h"
#include "benchmarks/Subjects.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

/// The plain side is reading the file's bytes: whatever opens it cannot do less.
void openSystemDatabaseAgain(benchmark::State& state) {
    const auto open = [] { return milliseconds([] { openSystemDatabase(); }); };
    const auto readBytes = [] {
        return milliseconds([] {
            QFile file(appPath + u"tessel.dat"_s);
            if (file.open(QIODevice::ReadOnly))
                file.readAll();
        });
    };
    open();
    compare(state, open, readBytes, Limit::ms(5));
}

}  // namespace

void registerStorage() { forOneSize("Open the system database again", openSystemDatabaseAgain); }
