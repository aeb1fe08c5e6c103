#include "benchmarks/Changes.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Subjects.h"
#include "editor/bills/FeatureData.h"
#include "editor/common/CopyName.h"

namespace {

const QString defaultName = QStringLiteral("新建项目特征");
constexpr int taken = 500;

QString copyName(int number) { return number == 0 ? defaultName : defaultName + QStringLiteral("(%1)").arg(number); }

void addFeatureAmongMany(benchmark::State& state) {
    Change change;
    change.prepare = [](PlainDatabase& library) {
        library.run("BEGIN");
        PlainStatement insert = library.prepare(
            "INSERT INTO tblBillSpec (BillID,Name,Type,LastUpdate,IsDel) VALUES (1,?,0,'2024-01-01 08:00:00',0)");
        for (int number = 0; number < taken; ++number)
            insert.run(copyName(number));
        library.run("COMMIT");
    };
    change.ours = [](Connection* library) {
        const QString name = GetCopyName(library, defaultName, "tblBillSpec", "Name");
        return addFeature(library, 1, name).has_value();
    };
    // The names count up without a gap, so counting them is enough to know the next one.
    change.plain = [](PlainDatabase& library) {
        PlainStatement names = library.prepare("SELECT count(*) FROM tblBillSpec WHERE Name>=? AND Name<?");
        names.bindAll(defaultName, defaultName + QLatin1Char(')'));
        names.step();
        const QString name = copyName(static_cast<int>(names.number(0)));
        names.reset();
        library
            .prepare(
                "INSERT INTO tblBillSpec (BillID,Name,Type,LastUpdate,IsDel) VALUES (1,?,0,'2024-01-01 08:00:00',0)")
            .run(name);
    };
    compareChange(state, change, Limit::times(3));
}

}  // namespace

void registerFeatures() { forEverySize("Add a feature, 500 of its name there (file)", addFeatureAmongMany); }
