// What edits, and the commands of contents, do to a library.

#include <gtest/gtest.h>

#include "tests/walk/Judge.h"

using namespace Qt::StringLiterals;
using namespace ContentCell;

namespace {

/// What a cell that takes `limit` characters holds when `text` was typed over it. A pair of which only one half fits
/// is none, and leaves no room for others.
QString inCell(QString text, int limit) {
    if (limit > 0 && text.size() > limit)
        text.truncate(text[limit - 1].isHighSurrogate() ? limit - 1 : limit);
    return text.replace(u'\n', u' ');
}

bool isSame(const QString& a, const QString& b) { return trimmed(a).toLower() == trimmed(b).toLower(); }

const QString checked = u"1"_s;
const QString unchecked = u"2"_s;

}  // namespace

LibraryModel::Ids Judge::rowsOfSubContent(const QString& contID, const QString& subNum) const {
    LibraryModel::Ids ids = m_library.ids("tblContDe", "ContID", contID);
    ids.removeIf([&](const QString& id) { return m_library.cell("tblContDe", id, "SubNum") != subNum; });
    return ids;
}

void Judge::contentCommand(const Deed& deed) {
    const Snapshot& shown = deed.before;
    const Rows& rows = shown.contents;
    const int row = shown.contentRow;
    const QString contID = shown.ofContent(ContID);
    const QString level = shown.ofContent(Level);
    if (deed.failed && deed.id != 403)
        return;
    if (deed.id == 400) {
        int number = 0;
        for (int above = row; above >= 0 && number == 0; --above)
            number = rows[above][ContNum].toInt();
        const QString bill = shown.ofBill(BillCell::Id);
        const QString name = m_library.copyName("tblCont", "Cont", u"新建工作内容"_s);
        m_library.renumber("tblCont", "BillID", bill, "Num", number + 1, 1);
        m_library.add("tblCont", {{u"Code"_s, shown.ofBill(BillCell::Code)},
                                  {u"Num"_s, QString::number(number + 1)},
                                  {u"Cont"_s, name},
                                  {u"Prof"_s, shown.profession},
                                  {u"BillID"_s, bill},
                                  {u"IsDel"_s, u"0"_s}});
    } else if (deed.id == 401) {
        int number = shown.ofContent(SubNum).toInt() + 1;
        for (int below = row + 1; level == u"0" && below < rows.size() && rows[below][Level] != u"0"; ++below)
            number = rows[below][SubNum].toInt() + 1;
        const QString name = m_library.copyName("tblContDe", "SubCont", u"新建二级工作内容"_s);
        m_library.renumber("tblContDe", "ContID", contID, "SubNum", number, 1);
        m_library.add("tblContDe", {{u"ContID"_s, contID},
                                    {u"SubNum"_s, QString::number(number)},
                                    {u"SubCont"_s, name},
                                    {u"IsDel"_s, u"0"_s}});
    } else if (deed.id == 402) {
        m_blankRation = true;
    } else {
        m_expected << (level == u"2" ? u"清单库编辑器: 确认删除定额 "_s : u"清单库编辑器: 确认删工作内容指引 "_s) +
                          shown.ofContent(Cont) + u" ？"_s;
        if (!deed.yes || deed.failed)
            return;
        const QString subNum = shown.ofContent(SubNum);
        if (level == u"0") {
            m_library.deleteContent(contID);
            m_library.renumber("tblCont", "BillID", m_prescribed.detailsOf, "Num", shown.ofContent(ContNum).toInt() + 1,
                               -1);
        } else if (level == u"1") {
            const LibraryModel::Ids ids = rowsOfSubContent(contID, subNum);
            if (ids.isEmpty())
                --m_prescribed.emptied[contID];
            for (const QString& id : ids)
                m_library.remove("tblContDe", id);
            m_library.renumber("tblContDe", "ContID", contID, "SubNum", subNum.toInt() + 1, -1);
        } else {
            deleteRation(shown);
        }
    }
}

/// The row goes, or keeps its place as that of its second-level content.
void Judge::deleteRation(const Snapshot& shown) {
    const int row = shown.contentRow;
    const QString id = shown.ofContent(ContDeID);
    const bool first = shown.contents[row - 1][Level] == u"1";
    const bool beforeSubContent = row + 1 < shown.contents.size() && shown.contents[row + 1][Level] == u"1";
    if (first && !beforeSubContent) {
        for (const char* column : {"Deh", "Name", "Unit", "DekID"})
            m_library.set("tblContDe", id, column, {});
        return;
    }
    const QString contID = shown.ofContent(ContID);
    const bool hadRows = !rowsOfSubContent(contID, shown.ofContent(SubNum)).isEmpty();
    m_library.remove("tblContDe", id);
    if (hadRows && rowsOfSubContent(contID, shown.ofContent(SubNum)).isEmpty())
        ++m_prescribed.emptied[contID];
}

void Judge::edit(const Deed& deed) {
    const Snapshot& shown = deed.before;
    const bool inDetails = deed.place.startsWith(u"grdSpec") || deed.place == u"grdConcent";
    const bool mayEdit = inDetails                      ? !m_prescribed.detailsLocked
                         : deed.place == u"grdBillList" ? deed.key != u"Code"
                                                        : shown.bill >= 0;
    bool refused = false;
    EXPECT_EQ(deed.possible, mayEdit || deed.kind == Deed::Kind::Tick) << "may be edited";
    if (!mayEdit || !deed.given) {
        // Nothing.
    } else if (deed.place.startsWith(u"txt")) {
        const QString id = shown.ofBill(BillCell::Id);
        const char* column = deed.place == u"txtRule" ? "Rule" : "Cont";
        const QString stored = m_library.cell("tblBill", id, column);
        const bool onlyLineFeeds = stored.contains(u'\n') && !stored.contains(u"\r\n"_s);
        if (isWritten(deed, isBroken(deed.text), "ModDBOperator.ExecuteDDL") &&
            deed.text != QString(stored).remove(u'\r'))
            m_library.set("tblBill", id, column,
                          QString(deed.text).replace(u"\n"_s, onlyLineFeeds ? u"\n"_s : u"\r\n"_s));
    } else if (deed.place == u"grdBillList") {
        const bool isPrefix = deed.key == u"CodePreFix";
        const QString text = trimmed(inCell(deed.text, isPrefix ? 8 : deed.key == u"Unit" ? 12 : 50));
        if (isWritten(deed, isBroken(text), "ModDBOperator.ExecuteDDL"))
            m_library.set("tblBill", shown.bills[deed.row][BillCell::Id], deed.key.toLatin1(), text);
    } else if (deed.place == u"grdSpec") {
        const QString text = deed.kind == Deed::Kind::Choice ? deed.text : trimmed(inCell(deed.text, 0));
        if (isWritten(deed, isBroken(text), "ModDBOperator.ExecuteDDL"))
            m_library.set("tblBillSpec", shown.features[deed.row][FeatureCell::Id], deed.key.toLatin1(), text);
    } else if (deed.place == u"grdSpecEnum") {
        Rows values = shown.values;
        if (deed.kind == Deed::Kind::Edit) {
            values[deed.row][2] = inCell(deed.text, 0);
        } else {
            const bool ticks = values[deed.row][1] != checked;
            for (QStringList& value : values)
                value[1] = ticks ? unchecked : value[1];
            values[deed.row][1] = ticks ? checked : unchecked;
        }
        writeValues(deed, values);
    } else if (deed.kind == Deed::Kind::Choice) {
        if (const QString id = shown.contents[deed.row][ContDeID]; !id.isEmpty())
            m_prescribed.cells[{Prescribed::nodeKey(shown.contents[deed.row]), DekName}] = deed.text;
    } else {
        const bool ration = shown.contents[deed.row][Level] == u"2";
        refused = editContent(deed, inCell(deed.text, ration ? 150 : 50));
    }
    // What was refused can be put right.
    EXPECT_EQ(deed.stayedOpen && !deed.place.startsWith(u"txt"), refused && !deed.closed);
}

/// All values of the feature are written at once; one that cannot be written keeps all from it.
void Judge::writeValues(const Deed& deed, Rows values) {
    QString inUse;
    bool broken = false;
    for (const QStringList& value : values) {
        broken = broken || isBroken(value[2]);
        if (value[1] == checked)
            inUse = value[2];
    }
    if (!isWritten(deed, broken, "frmEditor.grdSpecEnum_AfterEdit"))
        return;
    for (const QStringList& value : values) {
        m_library.set("tblSpecEnum", value[0], "IsUse", value[1]);
        m_library.set("tblSpecEnum", value[0], "EigenValue", value[2]);
    }
    m_library.set("tblBillSpec", deed.before.ofFeature(FeatureCell::Id), "DefVal", inUse);
}

/// Whether the edit is refused.
bool Judge::editContent(const Deed& deed, const QString& typed) {
    const QStringList& line = deed.before.contents[deed.row];
    const QString node = Prescribed::nodeKey(line);
    if (isSame(typed, line[Cont])) {
        if (typed != line[Cont])
            m_prescribed.cells[{node, Cont}] = typed;
        return false;
    }
    const QString text = trimmed(typed);
    if (line[Level] == u"2") {
        const QString code = text.toUpper();
        if (isBroken(code) && !m_rations.library(line[DekName]).codes.isEmpty())
            m_expected << u"frmEditor.GetDeData"_s;
        const Setting set = setRation(deed, deed.before.contents, deed.row, code, line[DekName]);
        // A code that could not be written is accepted in the grid all the same.
        if (set == Setting::NotWritten && !line[ContDeID].isEmpty())
            m_prescribed.cells[{node, Cont}] = text;
        return set == Setting::Refused;
    }
    if (!isWritten(deed, isBroken(text), "ModDBOperator.ExecuteDDL"))
        return true;
    m_prescribed.cells.remove({node, Cont});
    if (line[Level] == u"0")
        m_library.set("tblCont", line[ContID], "Cont", text);
    else
        for (const QString& id : rowsOfSubContent(line[ContID], line[SubNum]))
            m_library.set("tblContDe", id, "SubCont", text);
    return false;
}

/// The ration `code` is set onto row `row` of the grid that shows `rows`.
Judge::Setting Judge::setRation(const Deed& deed, const Rows& rows, int row, const QString& code,
                                const QString& library) {
    const QString rejection = m_rations.rejection(code, library);
    if (!rejection.isEmpty()) {
        m_expected << rejection;
        return Setting::Refused;
    }
    const QStringList& line = rows[row];
    QString id = line[ContDeID];
    int above = row - 1;
    if (id.isEmpty() && rows[above][Level] == u"1") {
        // The first row of a second-level content holds only its text until the first ration is stored in it.
        id = rowsOfSubContent(line[ContID], line[SubNum]).value(0);
        if (id.isEmpty())
            return Setting::NotWritten;
    }
    while (rows[above][Level] != u"1")
        --above;
    const QString name = m_rations.library(library).names[code.toUpper()];
    const QMap<QString, QString> cells{{u"Deh"_s, code},
                                       {u"Name"_s, name},
                                       {u"Unit"_s, m_rations.library(library).units[code.toUpper()]},
                                       {u"DekID"_s, library}};
    const bool broken = isBroken(name) || (id.isEmpty() && isBroken(rows[above][Cont]));
    if (!isWritten(deed, broken, "ModDBOperator.ExecuteDDL"))
        return Setting::NotWritten;
    if (id.isEmpty()) {
        QMap<QString, QString> added = cells;
        added.insert({{u"ContID"_s, line[ContID]},
                      {u"SubNum"_s, line[SubNum]},
                      {u"SubCont"_s, rows[above][Cont]},
                      {u"IsDel"_s, u"0"_s}});
        m_library.add("tblContDe", added);
        return Setting::Written;
    }
    for (auto cell = cells.begin(); cell != cells.end(); ++cell)
        m_library.set("tblContDe", id, cell.key().toLatin1(), *cell);
    for (const int column : {Cont, DekName})
        m_prescribed.cells.remove({u"2/"_s + id, column});
    return Setting::Written;
}

void Judge::rationFromBrowser(const Deed& deed) {
    Rows rows = deed.before.contents;
    int row = deed.before.contentRow;
    const int level = row < 0 ? -1 : rows[row][Level].toInt();
    const bool inserts = deed.key == u"insert";
    if (!deed.possible || m_prescribed.detailsLocked || level < (inserts ? 1 : 2))
        return;
    if (inserts) {
        // A blank row behind the last ration takes the place of an older one.
        QStringList blank = rows[row];
        blank[Level] = u"2"_s;
        blank[ContDeID].clear();
        do
            ++row;
        while (row < rows.size() && rows[row][Level] == u"2");
        blank[Cont] = u"new"_s;
        rows.insert(row, blank);
        rows.removeIf([](const QStringList& each) {
            return each[Level] == u"2" && each[ContDeID].isEmpty() && each[Cont] != u"new";
        });
        row = static_cast<int>(rows.indexOf(blank));
    }
    if (setRation(deed, rows, row, deed.text, deed.dekID) != Setting::Written || deed.text == deed.text.toUpper())
        return;
    // Codes from the browser are stored and shown as they come; a fresh load shows capitals.
    const Snapshot after = snapshotOf(*m_driver.editor());
    m_prescribed.cells[{Prescribed::nodeKey(after.contents[after.contentRow]), Cont}] =
        u'[' + deed.text + u"] "_s + m_rations.library(deed.dekID).names[deed.text.toUpper()];
}
