#include "app/controls/CommandBars.h"
#include "benchmarks/Changes.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDetails.h"
#include "benchmarks/Subjects.h"
#include "editor/chapters/ChapterData.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/chapters/ChapterTree.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int addCommand = 100;
constexpr int deleteCommand = 103;
constexpr int moveDownCommand = 105;
constexpr char allChapters[] = "SELECT * FROM tblSYB WHERE IFNULL(Code,'')<>'' ORDER BY length(code),code;";

void buildTree(benchmark::State& state) {
    const int bills = static_cast<int>(state.range(0));
    LibraryDocument library;
    if (!library.open(generatedLibrary(bills)))
        return state.SkipWithError("the library cannot be opened");
    ChapterPane pane(library);
    pane.resize(300, 700);
    pane.show();
    PlainDatabase plain(generatedLibrary(bills));
    PlainStatement query = plain.prepare(allChapters);
    compare(
        state, [&] { return milliseconds([&] { pane.CreateTvwSYB(); }); },
        [&] { return milliseconds([&] { query.readAll(); }); }, Limit::ms(50));
}

Change swapping() {
    Change change;
    change.plain = [](PlainDatabase& library) {
        library.run("BEGIN");
        for (const char* table : {"tblSYB", "tblBill", "tblCont"})
            library.run(
                u"UPDATE %1 SET Code=CASE WHEN Code<'02' THEN '02' ELSE '01' END||substr(Code,3) "
                "WHERE Code>='01' AND Code<'03'"_s.arg(QLatin1String(table)));
        library.run("COMMIT");
    };
    return change;
}

void swapChaptersInFile(benchmark::State& state) {
    Change change = swapping();
    change.ours = onConnection([](Connection* library) { ExchangeSYBNode(library, u"01"_s, u"02"_s); });
    compareChange(state, change, Limit::times(3));
}

void swapChapters(benchmark::State& state) {
    Change change = swapping();
    change.ours = inEditor([](EditorWindow& window) {
        ChapterPane* chapters = window->chapterPane();
        chapters->tvSYB_NodeClick(chapters->tvSYB()->node(chapterKey(u"01"_s)));
        return window.timed([&] { window->commandBars(1)->execute(moveDownCommand); });
    });
    change.shown = [](PlainDatabase& library) { library.prepare(allChapters).readAll(); };
    compareChange(state, change, Limit::times(3));
}

/// Behind the last chapter beside the full one.
void addChapter(benchmark::State& state) {
    Change change;
    change.ours = inEditor([](EditorWindow& window) {
        return window.timedAfterAnswer([&] { window->commandBars(1)->execute(addCommand); });
    });
    change.plain = [](PlainDatabase& library) {
        const QString code = u"010111"_s;
        PlainStatement taken = library.prepare("SELECT ID FROM tblSYB WHERE Code=?");
        taken.bindAll(code);
        taken.readAll();
        library.prepare("INSERT INTO tblSYB (Code,Name,LastUpdate,IsDel) VALUES (?,?,'2024-01-01 08:00:00',0)")
            .run(code, QString::fromLatin1(givenName));
    };
    // The new chapter is listed, empty as it is.
    change.shown = [](PlainDatabase& library) {
        library.prepare("SELECT * FROM tblBill WHERE Code LIKE '010111___' ORDER BY Code").readAll();
        PlainDetails(library).readNew(0);
    };
    compareChange(state, change, Limit::ms(noticeable));
}

/// The full chapter, with all that belongs to its bills.
void deleteChapter(benchmark::State& state) {
    Change change;
    change.ours = inEditor([](EditorWindow& window) {
        return window.timedAfterAnswer([&] { window->commandBars(1)->execute(deleteCommand); });
    });
    change.plain = [](PlainDatabase& library) {
        library.run(
            "BEGIN;"
            "CREATE TEMP TABLE gone AS SELECT ID FROM tblBill WHERE Code BETWEEN '010101' AND '010101999';"
            "DELETE FROM tblParm WHERE BillID IN gone;"
            "DELETE FROM tblContDe WHERE ContID IN (SELECT ID FROM tblCont WHERE BillID IN gone);"
            "DELETE FROM tblCont WHERE BillID IN gone;"
            "DELETE FROM tblSpecEnum WHERE SpecID IN (SELECT ID FROM tblBillSpec WHERE BillID IN gone);"
            "DELETE FROM tblBillSpec WHERE BillID IN gone;"
            "DELETE FROM tblBill WHERE ID IN gone;"
            "DELETE FROM tblSYB WHERE Code='010101';"
            "COMMIT");
    };
    change.shown = [](PlainDatabase& library) {
        library.prepare("SELECT * FROM tblBill WHERE Code LIKE '010102___' ORDER BY Code").readAll();
        PlainDetails(library).readNew(0);
    };
    compareChange(state, change, Limit::times(3));
}

}  // namespace

void registerChapters() {
    forEverySize("Build the chapter tree", buildTree, Runs::Many);
    forEverySize("Swap two level-1 chapters (statements)", swapChaptersInFile);
    forEverySize("Swap two level-1 chapters", swapChapters);
    forEverySize("Add a chapter", addChapter, Runs::Many);
    forEverySize("Delete a chapter of 999 bills", deleteChapter);
}
