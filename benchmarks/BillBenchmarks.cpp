#include <QLineEdit>

#include "app/controls/CommandBars.h"
#include "app/controls/KeyedGrid.h"
#include "benchmarks/Changes.h"
#include "benchmarks/EditorWindow.h"
#include "benchmarks/PlainDetails.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/bills/BillData.h"
#include "editor/bills/BillPane.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int addBillCommand = 200;
constexpr int deleteBillCommand = 201;
constexpr int moveDownCommand = 105;

int lastOf(const benchmark::State& state) { return billsInFullChapter(shapeOf(static_cast<int>(state.range(0)))); }

/// The generator writes the full chapter first, so its bill number n has the row id n.
QString codeOf(int number) { return QLatin1String(fullChapter) + u"%1"_s.arg(number, 3, 10, QChar(u'0')); }

/// Bills `first` to `last` of the full chapter, each with its code moved on by `by`.
std::vector<Bill> shifted(int first, int last, int by) {
    std::vector<Bill> bills;
    for (int number = first; number <= last; ++number)
        bills.push_back({number, codeOf(number + by)});
    return bills;
}

/// Moves the codes from `first` to `last` on by `by`, one pass a table.
void shiftPlain(PlainDatabase& library, int first, int last, int by) {
    for (const char* table : {"tblCont", "tblBill"})
        library.run(
            u"UPDATE %1 SET Code=printf('%09d',Code+%2) WHERE Code BETWEEN '%3' AND '%4'"_s.arg(QLatin1String(table))
                .arg(by)
                .arg(codeOf(first), codeOf(last)));
}

OursOn command(int id) {
    return inEditor([id](EditorWindow& window) { return window.timed([&] { window->commandBars(2)->execute(id); }); });
}

/// Below the first bill of the full chapter, which has room for one more.
Change addingAtTop(int last) {
    Change change;
    change.prepare = [last](PlainDatabase& library) { library.prepare("DELETE FROM tblBill WHERE ID=?").run(last); };
    change.plain = [last](PlainDatabase& library) {
        library.run("BEGIN");
        shiftPlain(library, 2, last - 1, 1);
        library.prepare("INSERT INTO tblBill (Code,LastUpdate,IsDel) VALUES (?,'2024-01-01 08:00:00',0)")
            .run(codeOf(2));
        library.run("COMMIT");
    };
    return change;
}

Change deletingFirst(int last) {
    Change change;
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
    return change;
}

Change movingFirstDown() {
    Change change;
    change.plain = [](PlainDatabase& library) {
        library.run("BEGIN");
        for (const char* table : {"tblParm", "tblCont"})
            library.run(
                u"UPDATE %1 SET Code=CASE BillID WHEN 1 THEN '%2' ELSE '%3' END WHERE BillID IN "
                "(1,2)"_s.arg(QLatin1String(table), codeOf(2), codeOf(1)));
        library.prepare("UPDATE tblBill SET Code=CASE ID WHEN 1 THEN ? ELSE ? END WHERE ID IN (1,2)")
            .run(codeOf(2), codeOf(1));
        library.run("COMMIT");
    };
    return change;
}

void addAtTopInFile(benchmark::State& state) {
    const int last = lastOf(state);
    Change change = addingAtTop(last);
    change.ours = onConnection([last](Connection* library) { return addBill(library, codeOf(2), shifted(2, last - 1, 1)).has_value(); });
    compareChange(state, change, Limit::times(3));
}

void addAtTop(benchmark::State& state) {
    Change change = addingAtTop(lastOf(state));
    change.ours = command(addBillCommand);
    change.shown = [](PlainDatabase& library) { PlainDetails(library).readNew(library.lastInsertId()); };
    compareChange(state, change, Limit::times(3));
}

void deleteFirstInFile(benchmark::State& state) {
    const int last = lastOf(state);
    Change change = deletingFirst(last);
    change.ours = onConnection([last](Connection* library) { return deleteBill(library, 1, shifted(2, last, -1)); });
    compareChange(state, change, Limit::times(3));
}

void deleteFirst(benchmark::State& state) {
    Change change = deletingFirst(lastOf(state));
    change.ours = inEditor([](EditorWindow& window) {
        return window.timedAfterAnswer([&] { window->commandBars(2)->execute(deleteBillCommand); });
    });
    change.shown = [](PlainDatabase& library) { PlainDetails(library).read(2); };
    compareChange(state, change, Limit::times(3));
}

void moveDownInFile(benchmark::State& state) {
    const QString unused = codeOf(lastOf(state) + 1);
    Change change = movingFirstDown();
    change.ours = onConnection([unused](Connection* library) {
        return moveBill(library, {1, codeOf(1)}, {2, codeOf(2)}, unused);
    });
    compareChange(state, change, Limit::times(3));
}

void moveDown(benchmark::State& state) {
    Change change = movingFirstDown();
    change.ours = command(moveDownCommand);
    compareChange(state, change, Limit::times(3));
}

void editName(benchmark::State& state) {
    Change change;
    change.ours = inEditor([](EditorWindow& window) {
        KeyedGrid* list = window->billPane()->grdBillList();
        list->setCell(0, u"Name"_s);
        return window.timed([&] {
            pressKey(list, Qt::Key_F2);
            auto* editor = list->findChild<QLineEdit*>(u"cellEditor"_s);
            editor->setText(QLatin1String(givenName));
            pressKey(editor, Qt::Key_Return);
        });
    });
    change.plain = [](PlainDatabase& library) {
        library.prepare("UPDATE tblBill SET Name=?,LastUpdate='2024-01-01 08:00:00' WHERE ID=1")
            .run(QString::fromLatin1(givenName));
    };
    compareChange(state, change, Limit::ms(noticeable));
}

}  // namespace

void registerBills() {
    forEverySize("Edit a bill's name", editName, Runs::Many);
    forEverySize("Add a bill at the top (statements)", addAtTopInFile);
    forEverySize("Add a bill at the top", addAtTop);
    forEverySize("Delete the first bill (statements)", deleteFirstInFile);
    forEverySize("Delete the first bill", deleteFirst);
    forEverySize("Move a bill (statements)", moveDownInFile, Runs::Many);
    forEverySize("Move a bill", moveDown, Runs::Many);
}
