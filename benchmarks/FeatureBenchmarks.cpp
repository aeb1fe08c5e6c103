#include "app/controls/CommandBars.h"
#include "benchmarks/Changes.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/PlainDetails.h"
#include "benchmarks/Subjects.h"
#include "editor/bills/FeatureData.h"
#include "editor/common/CopyName.h"

using namespace Qt::StringLiterals;

namespace {

const QString defaultName = u"新建项目特征"_s;
constexpr int taken = 500;
constexpr int addFeatureCommand = 300;

QString copyName(int number) { return number == 0 ? defaultName : defaultName + u"(%1)"_s.arg(number); }

/// The names stand behind all others, one a bill.
Change addingAmongMany() {
    Change change;
    change.prepare = [](PlainDatabase& library) {
        library.run("BEGIN");
        PlainStatement insert = library.prepare(
            "INSERT INTO tblBillSpec (BillID,Name,Type,LastUpdate,IsDel) VALUES (?,?,0,'2024-01-01 08:00:00',0)");
        for (int number = 0; number < taken; ++number)
            insert.run(number + 1, copyName(number));
        library.run("COMMIT");
    };
    // The names count up without a gap, so counting them is enough to know the next one.
    change.plain = [](PlainDatabase& library) {
        PlainStatement names = library.prepare("SELECT count(*) FROM tblBillSpec WHERE Name>=? AND Name<?");
        names.bindAll(defaultName, defaultName + u')');
        names.step();
        const QString name = copyName(static_cast<int>(names.number(0)));
        names.reset();
        library
            .prepare(
                "INSERT INTO tblBillSpec (BillID,Name,Type,LastUpdate,IsDel) VALUES (1,?,0,'2024-01-01 08:00:00',0)")
            .run(name);
    };
    return change;
}

void addFeatureInFile(benchmark::State& state) {
    Change change = addingAmongMany();
    change.ours = onConnection(
        [](Connection* library) { return addFeature(library, 1, GetCopyName(library, defaultName, "tblBillSpec", "Name")).has_value(); });
    compareChange(state, change, Limit::times(3));
}

void addFeatureInWindow(benchmark::State& state) {
    Change change = addingAmongMany();
    change.ours = inEditor(
        [](EditorWindow& window) { return window.timed([&] { window->commandBars(3)->execute(addFeatureCommand); }); });
    change.shown = [](PlainDatabase& library) { PlainDetails(library).readValues(library.lastInsertId()); };
    compareChange(state, change, Limit::times(3));
}

}  // namespace

void registerFeatures() {
    forEverySize("Add a feature among 500 (statements)", addFeatureInFile, Runs::Many);
    forEverySize("Add a feature among 500 of its name", addFeatureInWindow, Runs::Many);
}
