#include "benchmarks/Changes.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Subjects.h"
#include "editor/chapters/ChapterData.h"
#include "editor/chapters/ChapterPane.h"
#include "storage/LibraryConnection.h"

namespace {

void buildTree(benchmark::State& state) {
    const int bills = static_cast<int>(state.range(0));
    const std::unique_ptr<Connection> library = GetOrmConn(generatedLibrary(bills));
    ChapterPane pane;
    pane.setConnection(library.get());
    pane.resize(300, 700);
    pane.show();
    PlainDatabase plain(generatedLibrary(bills));
    PlainStatement query = plain.prepare("SELECT * FROM tblSYB WHERE IFNULL(Code,'')<>'' ORDER BY length(code),code;");
    compare(
        state, [&] { return milliseconds([&] { pane.CreateTvwSYB(); }); },
        [&] { return milliseconds([&] { query.readAll(); }); }, Limit::ms(50, bills));
}

void swapChapters(benchmark::State& state) {
    Change change;
    change.ours = [](Connection* library) {
        return ExchangeSYBNode(library, QStringLiteral("01"), QStringLiteral("02"));
    };
    change.plain = [](PlainDatabase& library) {
        library.run("BEGIN");
        for (const char* table : {"tblSYB", "tblBill", "tblCont"})
            library.run(QStringLiteral("UPDATE %1 SET Code=CASE WHEN Code<'02' THEN '02' ELSE '01' END||substr(Code,3) "
                                       "WHERE Code>='01' AND Code<'03'")
                            .arg(QLatin1String(table)));
        library.run("COMMIT");
    };
    compareChange(state, change, Limit::times(3));
}

}  // namespace

void registerChapters() {
    forEverySize("Build the chapter tree", buildTree);
    forEverySize("Swap two level-1 chapters", swapChapters);
}
