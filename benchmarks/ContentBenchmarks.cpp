#include "app/controls/CommandBars.h"
#include "app/controls/KeyedGrid.h"
#include "benchmarks/Changes.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/contents/ContentOutline.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/RationLookup.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int addContentCommand = 400;
constexpr int addSubContentCommand = 401;
constexpr int deleteCommand = 403;

// The first bill's outline begins with a content, its first second-level content and the ration of that.
constexpr int contentRow = 0;
constexpr int rationRow = 2;

int billsOf(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

void readContents(benchmark::State& state) {
    const QString path = generatedLibrary(billsOf(state));
    const std::unique_ptr<Connection> library = GetOrmConn(path);
    PlainDatabase plain(path);
    constexpr int bill = 200;
    PlainStatement contents = plain.prepare("SELECT * FROM tblCont WHERE BillID=? AND Prof LIKE '%01%' ORDER BY Num");
    contents.bindAll(bill);
    PlainStatement details = plain.prepare("SELECT * FROM tblContDe WHERE ContID BETWEEN ? AND ?");
    details.bindAll((bill - 1) * 8 + 1, bill * 8);
    compare(
        state, [&] { return milliseconds([&] { LoadBillContent(library.get(), bill, u"01"_s); }); },
        [&] {
            return milliseconds([&] {
                contents.readAll();
                details.readAll();
            });
        },
        Limit::times(2));
}

OursOn commandOn(int row, int id) {
    return inEditor([row, id](EditorWindow& window) {
        window->contentPane()->grdConcent()->setRow(row);
        return window.timed([&] { window->commandBars(2)->execute(id); });
    });
}

/// One pass that makes sure that no text in `table` begins with `name`.
void checkName(PlainDatabase& library, const char* table, const char* column, const QString& name) {
    PlainStatement taken = library.prepare(
        u"SELECT count(*) FROM %1 WHERE %2>=? AND %2<?"_s.arg(QLatin1String(table), QLatin1String(column)));
    taken.bindAll(name, name + u')');
    taken.readAll();
}

void addContent(benchmark::State& state) {
    Change change;
    change.ours = commandOn(contentRow, addContentCommand);
    change.plain = [](PlainDatabase& library) {
        checkName(library, "tblCont", "Cont", u"新建工作内容"_s);
        library.run(
            "BEGIN;"
            "UPDATE tblCont SET Num=Num+1 WHERE Num>=2 AND BillID=1;"
            "INSERT INTO tblCont (Code,Num,Cont,Prof,BillID,LastUpdate,IsDel) VALUES "
            "('010101001',2,'新建工作内容','01',1,'2024-01-01 08:00:00','0');"
            "COMMIT");
    };
    compareChange(state, change, Limit::ms(noticeable));
}

void addSubContent(benchmark::State& state) {
    Change change;
    change.ours = commandOn(contentRow, addSubContentCommand);
    change.plain = [](PlainDatabase& library) {
        checkName(library, "tblContDe", "SubCont", u"新建二级工作内容"_s);
        library.run(
            "BEGIN;"
            "UPDATE tblContDe SET SubNum=SubNum+1 WHERE SubNum>=3 AND ContID=1;"
            "INSERT INTO tblContDe (ContID,SubNum,SubCont,LastUpdate,IsDel) VALUES "
            "(1,3,'新建二级工作内容','2024-01-01 08:00:00','0');"
            "COMMIT");
    };
    compareChange(state, change, Limit::ms(noticeable));
}

void deleteContent(benchmark::State& state) {
    Change change;
    change.ours = inEditor([](EditorWindow& window) {
        window->contentPane()->grdConcent()->setRow(contentRow);
        return window.timedAfterAnswer([&] { window->commandBars(2)->execute(deleteCommand); });
    });
    change.plain = [](PlainDatabase& library) {
        library.run(
            "BEGIN;"
            "DELETE FROM tblContDe WHERE ContID=1;"
            "UPDATE tblCont SET Num=Num-1 WHERE Num>1 AND BillID=1;"
            "DELETE FROM tblCont WHERE ID=1;"
            "COMMIT");
    };
    compareChange(state, change, Limit::ms(noticeable));
}

void typeRation(benchmark::State& state) {
    const QString code = u"A500-40"_s;
    const QString libraryId = QLatin1String(largeRationLibrary);
    Change change;
    change.ours = inEditor([code, libraryId](EditorWindow& window) {
        window->contentPane()->grdConcent()->setRow(rationRow);
        return window.timed([&] { window->contentPane()->EditBillContDe(code, libraryId); });
    });
    change.plain = [code, libraryId, path = GetDekFilePath(libraryId)](PlainDatabase& library) {
        PlainDatabase rations(path);
        PlainStatement query = rations.prepare("SELECT MC,DW FROM DEB WHERE DEH=? COLLATE NOCASE");
        query.bindAll(code);
        query.step();
        library.prepare("UPDATE tblContDe SET Deh=?,Name=?,Unit=?,DekID=? WHERE ID=1")
            .run(code, query.text(0), query.text(1), libraryId);
    };
    compareChange(state, change, Limit::ms(noticeable));
}

}  // namespace

void registerContents() {
    forEverySize("Read a bill's contents (statements)", readContents, Runs::Many);
    forEverySize("Add a work content", addContent);
    forEverySize("Add a second-level content", addSubContent);
    forEverySize("Delete a work content", deleteContent);
    forEverySize("Set a ration by its code", typeRation, Runs::Many);
}
