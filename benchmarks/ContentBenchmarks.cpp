#include "benchmarks/Comparison.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Subjects.h"
#include "editor/contents/ContentOutline.h"
#include "storage/LibraryConnection.h"

namespace {

void readContents(benchmark::State& state) {
    const QString path = generatedLibrary(static_cast<int>(state.range(0)));
    const std::unique_ptr<Connection> library = GetOrmConn(path);
    PlainDatabase plain(path);
    PlainStatement contents = plain.prepare("SELECT * FROM tblCont WHERE BillID=500 AND Prof LIKE '%01%' ORDER BY Num");
    PlainStatement details = plain.prepare("SELECT * FROM tblContDe WHERE ContID BETWEEN ? AND ?");
    details.bindAll(499 * 8 + 1, 500 * 8);
    compare(
        state, [&] { return milliseconds([&] { LoadBillContent(library.get(), 500, QStringLiteral("01")); }); },
        [&] {
            return milliseconds([&] {
                contents.readAll();
                details.readAll();
            });
        },
        Limit::times(2));
}

}  // namespace

void registerContents() { forEverySize("Read a bill's contents (statements)", readContents, Runs::Many); }
