#include <QApplication>
#include <limits>

#include "app/controls/KeyedGrid.h"
#include "benchmarks/Comparison.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDetails.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/bills/BillPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/chapters/ChapterPane.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

int billsOf(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

PlainStatement plainList(PlainDatabase& library) {
    return library.prepare(
        u"SELECT * FROM tblBill WHERE Code LIKE '%1___' ORDER BY Code"_s.arg(QLatin1String(fullChapter)));
}

/// The bill list alone: what showing one screen of its rows costs is allowed on top.
void listChapter(benchmark::State& state) {
    const QString path = generatedLibrary(billsOf(state));
    LibraryDocument library;
    if (!library.open(path))
        return state.SkipWithError("the library cannot be opened");
    BillPane pane(library);
    pane.resize(1000, 400);
    pane.show();
    const auto list = [&] {
        return milliseconds([&] {
            pane.LoadBill(QLatin1String(fullChapter));
            QCoreApplication::processEvents();
        });
    };
    list();
    const KeyedGrid* grid = pane.grdBillList();
    const int rowsOfScreen = grid->viewport()->height() / grid->rowHeight(0) + 1;
    const auto showScreen = [&] {
        Recordset rows = library.connection()->OpenRecordset(sql("SELECT * FROM tblBill WHERE ID<=", rowsOfScreen));
        return milliseconds([&] {
            pane.ListBillData(rows);
            QCoreApplication::processEvents();
        });
    };
    double screen = showScreen();
    for (int n = 0; n < 40; ++n)
        screen = std::min(screen, showScreen());

    PlainDatabase plain(path);
    PlainStatement query = plainList(plain);
    compare(state, list, [&] { return milliseconds([&] { query.readAll(); }); },
            {1.5, screen, u"1.5 x plain + %1"_s.arg(screen, 0, 'f', 2).toStdString()});
}

void clickChapter(benchmark::State& state) {
    const QString path = generatedLibrary(billsOf(state));
    EditorWindow window(path);
    PlainDatabase plain(path);
    PlainStatement query = plainList(plain);
    PlainDetails details(plain);
    compare(
        state,
        [&] {
            ChapterPane* chapters = window->chapterPane();
            chapters->tvSYB_NodeClick(chapters->tvSYB()->firstNode());
            QCoreApplication::processEvents();
            return milliseconds([&] { window.listFullChapter(); });
        },
        [&] {
            return milliseconds([&] {
                query.readAll();
                details.read(1);
            });
        },
        Limit::ms(noticeable));
}

void changeBill(benchmark::State& state) {
    const QString path = generatedLibrary(billsOf(state));
    EditorWindow window(path);
    window.listFullChapter();
    KeyedGrid* list = window->billPane()->grdBillList();
    list->setRow(100);
    QCoreApplication::processEvents();
    PlainDatabase plain(path);
    PlainDetails details(plain);
    compare(
        state, [&] { return window.timed([&] { pressKey(list, Qt::Key_Down); }); },
        [&] { return milliseconds([&] { details.read(list->row() + 1); }); }, Limit::times(2));
    if (list->row() == 100)
        state.SkipWithError("the bill did not change");
}

void query(benchmark::State& state, const QString& text) {
    const QString path = generatedLibrary(billsOf(state));
    EditorWindow window(path);
    
    PlainDatabase plain(path);
    PlainStatement query = plain.prepare(u"SELECT * FROM tblBill WHERE Code LIKE '%%1%' ORDER BY Code"_s.arg(text));
    PlainDetails details(plain);
    compare(
        state, [&] { return window.timed([&] { window->billPane()->mnuQueryBill_Click(text); }); },
        [&] {
            return milliseconds([&] {
                query.readAll();
                details.read(1);
            });
        },
        Limit::ms(noticeable));
}

void querySome(benchmark::State& state) { query(state, u"0102"_s); }

void queryAll(benchmark::State& state) { query(state, u"0"_s); }

void openLibrary(benchmark::State& state) {
    const QString path = generatedLibrary(billsOf(state));
    std::unique_ptr<EditorWindow> window;
    compare(
        state,
        [&] {
            window.reset();
            return milliseconds([&] { window = std::make_unique<EditorWindow>(path); });
        },
        [&] {
            return milliseconds([&] {
                PlainDatabase plain(path);
                plain.prepare("SELECT * FROM tblSYB WHERE IFNULL(Code,'')<>'' ORDER BY length(code),code;").readAll();
            });
        },
        Limit::ms(noticeable));
}

}  // namespace

void registerViews() {
    forEverySize("Open a library", openLibrary, Runs::Many);
    forEverySize("List a chapter of 999 bills, list alone", listChapter, Runs::Many);
    forEverySize("Click that chapter, all details shown", clickChapter, Runs::Many);
    forEverySize("Change of bill, all details shown", changeBill, Runs::Many);
    forEverySize("Query bills by code", querySome, Runs::Many);
    forEverySize("Query that finds every bill", queryAll);
}
