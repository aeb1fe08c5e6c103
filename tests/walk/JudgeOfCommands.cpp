// What commands do to bills, features, values and contents.

#include "tests/walk/Judge.h"

using namespace ContentCell;

/// The list stays in its order, from now until it is filled again, because of a code that is none of its chapter.
void Judge::keepOrder(const Snapshot& shown, const QString& code) {
    if (!m_prescribed.bills && (code.left(6) != shown.chapter || code.size() != 9))
        m_prescribed.bills = columnOf(shown.bills, BillCell::Id);
}

/// Gives a bill and its contents another code.
void Judge::recode(const QString& bill, const QString& code) {
    m_library.run("UPDATE tblBill SET Code=? WHERE ID=?", {code, bill});
    m_library.run("UPDATE tblCont SET Code=? WHERE BillID=?", {code, bill});
}

/// The bills from row `first` on get the next code, or the one before.
void Judge::shiftBills(const Snapshot& shown, int first, bool forward) {
    for (const QStringList& bill : shown.bills.mid(first)) {
        const QString code = neighbourCode(bill[BillCell::Code], 9, forward);
        recode(bill[BillCell::Id], code);
        keepOrder(shown, code);
    }
}

void Judge::billCommand(const Deed& deed) {
    const Snapshot& shown = deed.before;
    const int row = shown.bill;
    if (deed.command == 2202) {
        m_query = deed.text;
        m_prescribed.bills.reset();
        m_led.rows[u"tvSYB"_s] = -1;
        return;
    }
    const bool deletes = deed.command == 2201;
    const QString code = shown.ofBill(BillCell::Code);
    if (deletes)
        m_expected << u"清单库编辑器: 确认删除清单 %1 %2 ？"_s.arg(code, shown.ofBill(BillCell::Name));
    if (deed.failed || (deletes && !deed.yes))
        return;
    int current = row + 1;
    if (deletes) {
        m_library.run("DELETE FROM tblBill WHERE ID=?", {shown.ofBill(BillCell::Id)});
        if (shown.listsQuery && row + 1 < shown.bills.size())
            keepOrder(shown);
        shiftBills(shown, row + 1, false);
        if (m_prescribed.bills)
            m_prescribed.bills->removeAt(row);
        current = qMin(row, static_cast<int>(shown.bills.size()) - 2);
    } else if (deed.command == 2200) {
        const QString added = neighbourCode(row < 0 ? shown.chapter + u"000"_s : code, 9, true);
        keepOrder(shown, added);
        shiftBills(shown, row + 1, true);
        m_library.run("INSERT INTO tblBill(Code,IsDel) VALUES(?,0)", {added});
        if (m_prescribed.bills)
            m_prescribed.bills->insert(row + 1, snapshotOf(*m_driver.editor()).bills[row + 1][BillCell::Id]);
    } else {
        current = deed.command == 2104 ? row - 1 : row + 1;
        for (const auto& [moved, place] : {std::pair(row, current), {current, row}}) {
            const QString id = shown.bills[moved][BillCell::Id];
            recode(id, shown.bills[place][BillCell::Code]);
            m_library.run("UPDATE tblParm SET Code=? WHERE BillID=?", {shown.bills[place][BillCell::Code], id});
        }
        if (m_prescribed.bills)
            m_prescribed.bills->swapItemsAt(row, current);
    }
    m_led.rows[u"grdBillList"_s] = current;
}

void Judge::featureCommand(const Deed& deed) {
    if (deed.failed)
        return;
    const Snapshot& shown = deed.before;
    const bool ofFeature = deed.command < 4000;
    const bool adds = deed.command % 1000 == 300;
    const Rows& rows = ofFeature ? shown.features : shown.values;
    const int row = ofFeature ? shown.feature : shown.value;
    const int count = static_cast<int>(rows.size());
    m_led.rows[ofFeature ? u"grdSpec"_s : u"grdSpecEnum"_s] = adds ? count : qMin(row, count - 2);
    if (!adds)
        m_library.run(ofFeature ? "DELETE FROM tblBillSpec WHERE ID=?" : "DELETE FROM tblSpecEnum WHERE ID=?",
                      {rows[row][0]});
    else if (ofFeature)
        m_library.run("INSERT INTO tblBillSpec(BillID,Name,Type,IsDel) VALUES(?,?,0,0)",
                      {shown.ofBill(BillCell::Id),
                       m_library.copyName("SELECT 1 FROM tblBillSpec WHERE Name=?", u"新建项目特征"_s)});
    else
        m_library.run("INSERT INTO tblSpecEnum(SpecID,IsDel) VALUES(?,0)", {shown.ofFeature(FeatureCell::Id)});
}

void Judge::contentCommand(const Deed& deed) {
    const Snapshot& shown = deed.before;
    const Rows& rows = shown.contents;
    const int row = shown.contentRow;
    const QString contID = shown.ofContent(ContID);
    const QString bill = m_prescribed.detailsOf;
    const QString level = shown.ofContent(Level);
    if (deed.command == 2403)
        m_expected << (level == u"2" ? u"清单库编辑器: 确认删除定额 "_s : u"清单库编辑器: 确认删工作内容指引 "_s) +
                          shown.ofContent(Cont) + u" ？"_s;
    if (deed.failed || (deed.command == 2403 && !deed.yes))
        return;
    if (deed.command == 2400) {
        int number = 0;
        for (int above = row; above >= 0 && number == 0; --above)
            number = rows[above][ContNum].toInt();
        const QString next = QString::number(number + 1);
        const QString name = m_library.copyName("SELECT 1 FROM tblCont WHERE Cont=?", u"新建工作内容"_s);
        m_library.run("UPDATE tblCont SET Num=Num+1 WHERE BillID=? AND Num>=?", {bill, next});
        m_library.run("INSERT INTO tblCont(Code,Num,Cont,Prof,BillID,IsDel) VALUES(?,?,?,?,?,0)",
                      {shown.ofBill(BillCell::Code), next, name, shown.profession, bill});
    } else if (deed.command == 2401) {
        int number = shown.ofContent(SubNum).toInt() + 1;
        for (int below = row + 1; level == u"0" && below < rows.size() && rows[below][Level] != u"0"; ++below)
            number = rows[below][SubNum].toInt() + 1;
        const QStringList place{contID, QString::number(number)};
        const QString name = m_library.copyName("SELECT 1 FROM tblContDe WHERE SubCont=?", u"新建二级工作内容"_s);
        m_library.run("UPDATE tblContDe SET SubNum=SubNum+1 WHERE ContID=? AND SubNum>=?", place);
        m_library.run("INSERT INTO tblContDe(ContID,SubNum,SubCont,IsDel) VALUES(?,?,?,0)", place + QStringList{name});
    } else if (deed.command == 2402) {
        m_led.blankRation = true;
    } else if (level == u"0") {
        m_library.run("DELETE FROM tblCont WHERE ID=?", {contID});
        m_library.run("UPDATE tblCont SET Num=Num-1 WHERE BillID=? AND Num>?", {bill, shown.ofContent(ContNum)});
    } else if (level == u"1") {
        const QStringList place{contID, shown.ofContent(SubNum)};
        if (rowsOfSubContent(rows[row]).isEmpty())
            --m_prescribed.emptied[contID];
        m_library.run("DELETE FROM tblContDe WHERE ContID=? AND SubNum=?", place);
        m_library.run("UPDATE tblContDe SET SubNum=SubNum-1 WHERE ContID=? AND SubNum>?", place);
    } else {
        deleteRation(shown);
    }
}

/// The row goes, or keeps its place as that of its second-level content.
void Judge::deleteRation(const Snapshot& shown) {
    const Rows& rows = shown.contents;
    const int row = shown.contentRow;
    const QString id = rows[row][ContDeID];
    const bool first = rows[row - 1][Level] == u"1";
    const bool beforeSubContent = row + 1 < rows.size() && rows[row + 1][Level] == u"1";
    if (first && !beforeSubContent) {
        m_library.run("UPDATE tblContDe SET Deh='',Name='',Unit='',DekID='' WHERE ID=?", {id});
        return;
    }
    // One that was emptied before is not emptied again.
    const bool hadRows = !rowsOfSubContent(rows[row]).isEmpty();
    m_library.run("DELETE FROM tblContDe WHERE ID=?", {id});
    if (hadRows && rowsOfSubContent(rows[row]).isEmpty())
        ++m_prescribed.emptied[rows[row][ContID]];
}

QStringList Judge::rowsOfSubContent(const QStringList& line) {
    return m_library.run("SELECT ID FROM tblContDe WHERE ContID=? AND SubNum=? ORDER BY ID",
                         {line[ContID], line[SubNum]});
}
