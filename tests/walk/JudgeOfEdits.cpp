// What edits do to a library, and rations taken from the browser.

#include "tests/walk/Judge.h"

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

const QString checked = u"1"_s, unchecked = u"2"_s;

}  // namespace

void Judge::edit(const Deed& deed) {
    const Snapshot& shown = deed.before;
    const bool chosen = deed.kind == Deed::Kind::Choice;
    const bool inBox = deed.place.startsWith(u"txt");
    const bool inBills = deed.place == u"grdBillList";
    const bool mayEdit = inBills ? deed.key != u"Code" : inBox ? shown.bill >= 0 : !m_prescribed.detailsLocked;
    EXPECT_EQ(deed.possible, mayEdit || deed.kind == Deed::Kind::Tick) << "may be edited";
    bool refused = false;
    if (!mayEdit || !deed.given) {
        // Nothing.
    } else if (inBox) {
        const bool isRule = deed.place == u"txtRule";
        const QString stored = shown.ofBill(isRule ? BillCell::Rule : BillCell::Cont);
        const bool onlyLineFeeds = stored.contains(u'\n') && !stored.contains(u"\r\n"_s);
        QString text = deed.text;
        if (text == QString(stored).remove(u'\r'))
            text = stored;
        else if (!onlyLineFeeds)
            text.replace(u"\n"_s, u"\r\n"_s);
        write(deed, isRule ? u"tblBill SET Rule"_s : u"tblBill SET Cont"_s, shown.ofBill(BillCell::Id), text);
    } else if (inBills) {
        const int limit = deed.key == u"CodePreFix" ? 8 : deed.key == u"Unit" ? 12 : 50;
        write(deed, u"tblBill SET "_s + deed.key, shown.bills[deed.row][BillCell::Id],
              trimmed(inCell(deed.text, limit)));
    } else if (deed.place == u"grdSpec") {
        write(deed, u"tblBillSpec SET "_s + deed.key, shown.features[deed.row][FeatureCell::Id],
              chosen ? deed.text : trimmed(inCell(deed.text, 0)));
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
    } else if (chosen) {
        if (const QStringList& line = shown.contents[deed.row]; !line[ContDeID].isEmpty())
            m_prescribed.cells[{Prescribed::nodeKey(line), DekName}] = deed.text;
    } else {
        refused = editContent(deed, inCell(deed.text, shown.contents[deed.row][Level] == u"2" ? 150 : 50));
    }
    // What was refused can be put right.
    EXPECT_EQ(deed.stayedOpen && !inBox, refused && !deed.closed);
}

/// Writes a text as it is into a column, told as "table SET column".
void Judge::write(const Deed& deed, const QString& column, const QString& id, const QString& text) {
    if (isWritten(deed, isBroken(text)))
        m_library.rows(u"UPDATE %1=? WHERE ID=?"_s.arg(column), {text, id});
}

/// All values of the feature are written at once; one that cannot be written keeps all from it.
void Judge::writeValues(const Deed& deed, const Rows& values) {
    QString inUse;
    QString all;
    for (const QStringList& value : values) {
        all += value[2];
        if (value[1] == checked)
            inUse = value[2];
    }
    if (!isWritten(deed, isBroken(all), "frmEditor.grdSpecEnum_AfterEdit"))
        return;
    for (const QStringList& value : values)
        m_library.run("UPDATE tblSpecEnum SET IsUse=?2,EigenValue=?3 WHERE ID=?1", value);
    m_library.run("UPDATE tblBillSpec SET DefVal=? WHERE ID=?", {inUse, deed.before.ofFeature(FeatureCell::Id)});
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
        if (isBroken(code) && !m_rations.library(line[DekName]).names.isEmpty())
            m_expected << u"frmEditor.GetDeData"_s;
        const Setting set = setRation(deed, deed.before.contents, deed.row, code, line[DekName]);
        // A code that could not be written is accepted in the grid all the same.
        if (set == Setting::NotWritten && !line[ContDeID].isEmpty())
            m_prescribed.cells[{node, Cont}] = text;
        return set == Setting::Refused;
    }
    if (!isWritten(deed, isBroken(text)))
        return true;
    m_prescribed.cells.remove({node, Cont});
    if (line[Level] == u"0")
        m_library.run("UPDATE tblCont SET Cont=? WHERE ID=?", {text, line[ContID]});
    else
        m_library.run("UPDATE tblContDe SET SubCont=? WHERE ContID=? AND SubNum=?", {text, line[ContID], line[SubNum]});
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
        id = rowsOfSubContent(line).value(0);
        if (id.isEmpty())
            return Setting::NotWritten;
    }
    while (rows[above][Level] != u"1")
        --above;
    const Rations::Library from = m_rations.library(library);
    const QStringList ration{code, from.names[code.toUpper()], from.units[code.toUpper()], library};
    if (!isWritten(deed, isBroken(ration[1]) || (id.isEmpty() && isBroken(rows[above][Cont]))))
        return Setting::NotWritten;
    if (id.isEmpty()) {
        m_library.run("INSERT INTO tblContDe(Deh,Name,Unit,DekID,ContID,SubNum,SubCont,IsDel) VALUES(?,?,?,?,?,?,?,0)",
                      ration + QStringList{line[ContID], line[SubNum], rows[above][Cont]});
        return Setting::Written;
    }
    m_library.run("UPDATE tblContDe SET Deh=?,Name=?,Unit=?,DekID=? WHERE ID=?", ration + QStringList{id});
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
        // A blank row behind the last ration, in the place of an older one.
        QStringList blank = rows[row];
        blank[Level] = u"2"_s;
        blank[ContDeID].clear();
        while (row + 1 < rows.size() && rows[row + 1][Level] == u"2")
            ++row;
        if (rows[row][Level] != u"2" || !rows[row][ContDeID].isEmpty())
            rows.insert(++row, blank);
    }
    if (setRation(deed, rows, row, deed.text, deed.dekID) != Setting::Written || deed.text == deed.text.toUpper())
        return;
    // Codes from the browser are stored and shown as they come; a fresh load shows capitals.
    const Snapshot after = snapshotOf(*m_driver.editor());
    m_prescribed.cells[{Prescribed::nodeKey(after.contents[after.contentRow]), Cont}] =
        u'[' + deed.text + u"] "_s + m_rations.library(deed.dekID).names[deed.text.toUpper()];
}
