#include <cmath>

#include "app/controls/KeyedGrid.h"
#include "benchmarks/Actions.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Sides.h"
#include "storage/LibraryConnection.h"
#include "storage/Lookups.h"

using namespace Qt::StringLiterals;

namespace {

const QString chapters = u"SELECT * FROM tblSYB WHERE IFNULL(Code,'')<>'' ORDER BY length(code),code;"_s;
const QString fullChapterBills = u"SELECT * FROM tblBill WHERE Code LIKE '010101___' ORDER BY Code;"_s;
const QString contentsOfFirst =
    u"SELECT * FROM tblCont WHERE BillID=1 AND Prof LIKE '%01%' ORDER BY Num;"
    "SELECT * FROM tblContDe WHERE ContID BETWEEN 1 AND 8;"_s;
/// What the window shows of a bill: one pass over each table.
const QString detailsOfFirst =
    contentsOfFirst + u"SELECT * FROM tblBillSpec WHERE BillID=1;SELECT * FROM tblSpecEnum WHERE SpecID=1;"_s;
const QString foundBills = u"SELECT * FROM tblBill WHERE Code LIKE '%%1%' ORDER BY Code;"_s;

void nothing(EditorWindow&) {}
void listFull(EditorWindow& window) { window.listFullChapter(); }
/// Down the full chapter, one bill a run.
void nextOfFull(EditorWindow& window) {
    if (window.bills()->rowCount() == 0)
        window.listFullChapter();
}
void listNone(EditorWindow& window) { window.clickChapter(); }

Gesture press(const char* control, int key) {
    return [=](EditorWindow& window) { window.press(control, key); };
}

Gesture search(const QString& text) {
    return [=](EditorWindow& window) { window.search(text); };
}

Sides opening(int bills) {
    const QString path = generatedLibrary(bills);
    return {[path, window = std::make_shared<std::unique_ptr<EditorWindow>>()] {
                window->reset();
                return milliseconds([&] { *window = std::make_unique<EditorWindow>(path); });
            },
            [path] { return milliseconds([&] { PlainDatabase(path).run(chapters); }); }};
}

/// Beside one pass over the tables, which stays in memory as the program's does.
Sides filling(int bills) {
    const QString path = generatedLibrary(bills);
    return {[path] {
                const auto library = GetOrmConn(path);
                return milliseconds([&] {
                    while (library->lookups().fillSlice()) {
                    }
                });
            },
            [path] {
                PlainDatabase library(path);
                return milliseconds([&] {
                    library.run(
                        "SELECT * FROM tblBill; SELECT * FROM tblCont; SELECT * FROM tblContDe; SELECT * FROM "
                        "tblBillSpec; SELECT * FROM tblSpecEnum; SELECT * FROM tblParm");
                });
            }};
}

Sides longestSlice(int) {
    const QString path = generatedLibrary(60000);
    return {[path] {
                const auto library = GetOrmConn(path);
                double longest = 0;
                for (bool more = true; more;)
                    longest = std::fmax(longest, milliseconds([&] { more = library->lookups().fillSlice(); }));
                return longest;
            },
            [path] { return milliseconds([&] { PlainDatabase(path).run("SELECT * FROM tblBill LIMIT 20000"); }); }};
}

}  // namespace

std::vector<MeasuredAction> viewActions() {
    constexpr CostLimit noticeable{0, 100};
    return {
        {"Open a library", LibrarySize::Every, 45, noticeable, opening},
        {"Fill the look-ups", LibrarySize::Every, 15, {3, 0, 1000}, filling},
        {"Longest wait while look-ups of 60,000 bills are filled", LibrarySize::None, 3, noticeable, longestSlice},
        {"Build the chapter tree",
         LibrarySize::Every,
         45,
         {0, 50},
         viewing(
             nothing, [](EditorWindow& window) { window.rebuildTree(); }, chapters)},
        {"List a chapter of 999 bills without details",
         LibrarySize::Every,
         45,
         {1.5, 5},
         viewingBareBills(listNone, listFull, fullChapterBills)},
        {"Click a chapter of 999 bills, details shown", LibrarySize::Every, 45, noticeable,
         viewing(listNone, listFull, fullChapterBills + detailsOfFirst), true},
        {"Change of bill, details shown",
         LibrarySize::Every,
         45,
         {2, 5, 100, 1.5},
         viewing(nextOfFull, press("grdBillList", Qt::Key_Down), detailsOfFirst),
         true},
        {"Choose a profession, contents shown",
         LibrarySize::Every,
         45,
         {2, 5, 100, 1.5},
         viewing(
             [](EditorWindow& window) {
                 listFull(window);
                 window.press("cboProfession", Qt::Key_Down);
             },
             press("cboProfession", Qt::Key_Up), contentsOfFirst)},
        {"Query bills by code", LibrarySize::Every, 45, noticeable,
         viewing(nothing, search(u"0102"_s), foundBills.arg(u"0102"_s) + detailsOfFirst), true},
        {"Query that finds every bill", LibrarySize::Every, 15, noticeable,
         viewing(nothing, search(u"0"_s), foundBills.arg(u"0"_s) + detailsOfFirst)},
    };
}
