#include "benchmarks/Changes.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/bills/BillData.h"

namespace {

/// The generator writes the full chapter first, so its bill number n has the row id n.
QString codeOf(int number) {
    return QLatin1String(fullChapter) + QStringLiteral("%1").arg(number, 3, 10, QLatin1Char('0'));
}

/// Bills `first` to `last` of the full chapter, each with its code moved on by `by`.
std::vector<BillCode> shifted(int first, int last, int by) {
    std::vector<BillCode> bills;
    for (int number = first; number <= last; ++number)
        bills.push_back({number, codeOf(number + by)});
    return bills;
}

/// Moves the codes from `first` to `last` on by `by`, one pass a table.
void shiftPlain(PlainDatabase& library, int first, int last, int by) {
    for (const char* table : {"tblCont", "tblBill"})
        library.run(QStringLiteral("UPDATE %1 SET Code=printf('%09d',Code+%2) WHERE Code BETWEEN '%3' AND '%4'")
                        .arg(QLatin1String(table))
                        .arg(by)
                        .arg(codeOf(first), codeOf(last)));
}

void addBillAtTop(benchmark::State& state) {
    const int last = billsInFullChapter(shapeOf(static_cast<int>(state.range(0)))) - 1;
    Change change;
    // One bill less than the chapter can hold, or no bill could be added.
    change.prepare = [last](PlainDatabase& library) {
        library.prepare("DELETE FROM tblBill WHERE ID=?").run(last + 1);
    };
    change.ours = [last](Connection* library) { return addBill(library, codeOf(2), shifted(2, last, 1)).has_value(); };
    change.plain = [last](PlainDatabase& library) {
        library.run("BEGIN");
        shiftPlain(library, 2, last, 1);
        library.prepare("INSERT INTO tblBill (Code,LastUpdate,IsDel) VALUES (?,'2024-01-01 08:00:00',0)")
            .run(codeOf(2));
        library.run("COMMIT");
    };
    compareChange(state, change, Limit::times(3));
}

void deleteFirstBill(benchmark::State& state) {
    const int last = billsInFullChapter(shapeOf(static_cast<int>(state.range(0))));
    Change change;
    change.ours = [last](Connection* library) { return deleteBill(library, 1, shifted(2, last, -1)); };
    change.plain = [last](PlainDatabase& library) {
        library.run(
            "BEGIN;"
            "DELETE FROM tblParm WHERE BillID=1;"
            "DELETE FROM tblContDe WHERE ContID IN (SELECT ID FROM tblCont WHERE BillID=1);"
            "DELETE FROM tblCont WHERE BillID=1;"
            "DELETE FROM tblSpecEnum WHERE SpecID IN (SELECT ID FROM tblBillSpec WHERE BillID=1);"
            "DELETE FROM tblBillSpec WHERE BillID=1;"
            "DELETE FROM tblBill WHERE ID=1;");
        shiftPlain(library, 2, last, -1);
        library.run("COMMIT");
    };
    compareChange(state, change, Limit::times(3));
}

void moveBillDown(benchmark::State& state) {
    const QString temporary = codeOf(billsInFullChapter(shapeOf(static_cast<int>(state.range(0)))) + 1);
    Change change;
    change.ours = [temporary](Connection* library) {
        return moveBill(library, {1, codeOf(1)}, {2, codeOf(2)}, temporary);
    };
    change.plain = [](PlainDatabase& library) {
        library.run("BEGIN");
        for (const char* table : {"tblParm", "tblCont"})
            library.run(QStringLiteral("UPDATE %1 SET Code=CASE BillID WHEN 1 THEN '%2' ELSE '%3' END WHERE BillID IN "
                                       "(1,2)")
                            .arg(QLatin1String(table), codeOf(2), codeOf(1)));
        library.prepare("UPDATE tblBill SET Code=CASE ID WHEN 1 THEN ? ELSE ? END WHERE ID IN (1,2)")
            .run(codeOf(2), codeOf(1));
        library.run("COMMIT");
    };
    compareChange(state, change, Limit::times(3));
}

}  // namespace

void registerBills() {
    forEverySize("Add a bill at the top (file)", addBillAtTop);
    forEverySize("Delete the first bill (file)", deleteFirstBill);
    forEverySize("Move a bill (file)", moveBillDown);
}
