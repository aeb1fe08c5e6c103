#include "tests/walk/Judge.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int depthCell = 0;
constexpr int tagCell = 2;

qsizetype endOfSubtree(const Rows& tree, qsizetype row) {
    const int depth = tree[row][depthCell].toInt();
    do
        ++row;
    while (row < tree.size() && tree[row][depthCell].toInt() > depth);
    return row;
}

/// The row of the next or previous chapter below the same parent, or -1.
qsizetype sibling(const Rows& tree, qsizetype row, bool forward) {
    if (row < 0)
        return -1;
    const int depth = tree[row][depthCell].toInt();
    const int step = forward ? 1 : -1;
    do
        row += step;
    while (row >= 0 && row < tree.size() && tree[row][depthCell].toInt() > depth);
    return row >= 0 && row < tree.size() && tree[row][depthCell].toInt() == depth ? row : -1;
}

qsizetype lastSibling(const Rows& tree, qsizetype row) {
    for (qsizetype next = row; next >= 0; next = sibling(tree, next, true))
        row = next;
    return row;
}

qsizetype parentOf(const Rows& tree, qsizetype row) {
    const int depth = tree[row][depthCell].toInt();
    while (row >= 0 && tree[row][depthCell].toInt() >= depth)
        --row;
    return row;
}

bool overflows(const QString& code) { return code.size() % 2 == 1 || code.size() > 6; }

QStringList idsOf(const Rows& bills) {
    QStringList ids;
    for (const QStringList& bill : bills)
        ids << bill[BillCell::Id];
    return ids;
}

}  // namespace

Judge::Judge(EditorDriver& driver, RandomUser& user) : m_driver(driver), m_comparison(driver, m_prescribed) {
    user.onDeed = [this](const Deed& deed) { see(deed); };
    user.onStep = [this](const QStringList& messages, bool disturbed) { endOfStep(messages, disturbed); };
    m_library.load(driver.path());
    m_prescribed.follow(driver.editor()->library());
    checkWindow();
}

void Judge::see(const Deed& deed) {
    using enum Deed::Kind;
    m_rows.clear();
    m_nodes = Nodes::Any;
    m_blankRation = false;
    switch (deed.kind) {
        case Look:
            if (deed.row >= 0)
                m_rows[deed.place] = deed.row;
            EXPECT_TRUE(deed.place != u"browser" || deed.possible || m_prescribed.detailsLocked);
            if (deed.place == u"cboProfession" && deed.before.profession != snapshotOf(*m_driver.editor()).profession) {
                const bool locked = m_prescribed.detailsLocked;
                m_prescribed.detailsLoaded();
                m_prescribed.detailsLocked = locked;
                m_prescribed.contentsEmptied = deed.before.bill < 0;
            }
            if (const QString path = m_rations.library(deed.dekID).browserPath;
                !deed.dekID.isEmpty() && !QFile::exists(path) && !m_prescribed.detailsLocked)
                m_expected << u"提示: "_s + path + u" 文件不存在!"_s;
            break;
        case Refused:
            m_expected << (deed.text.isEmpty() ? u"frmEditor.LoadBill"_s : u"frmEditor.mnuQueryBill_Click"_s);
            EXPECT_TRUE(deed.possible) << "what could not be listed is shown";
            m_query = deed.text;
            break;
        case Reopened:
            m_query.clear();
            m_nodes = Nodes::AsLoaded;
            m_prescribed.everythingLoaded();
            m_prescribed.follow(m_driver.editor()->library());
            if (!deed.text.isEmpty())
                m_library.load(m_driver.path());
            break;
        case Command:
            command(deed);
            break;
        case Ration:
            rationFromBrowser(deed);
            break;
        default:
            edit(deed);
    }
}

void Judge::endOfStep(const QStringList& messages, bool disturbed) {
    QStringList seen = messages;
    static const QRegularExpression errorPlace(u"^\\w+\\.\\w*$"_s);
    // When writing fails there may be errors, each of which has been seen with its deed.
    if (disturbed)
        seen.removeIf(
            [this](const QString& text) { return errorPlace.match(text).hasMatch() && !m_expected.contains(text); });
    EXPECT_EQ(seen, m_expected);
    m_expected.clear();
    m_library.expectFile(m_driver.path());
    checkWindow();
    m_rows.clear();
    m_nodes = Nodes::Any;
    m_blankRation = false;
}

void Judge::checkWindow() {
    m_comparison.check(m_query);
    const Snapshot& shown = m_comparison.last();
    for (const auto& [host, id] : {std::pair(1, 100), {1, 101}, {1, 102}, {1, 103}, {1, 104}, {1, 105}, {1, 108},
                                   {1, 109},          {2, 104}, {2, 105}, {2, 200}, {2, 201}, {2, 202}, {2, 400},
                                   {2, 401},          {2, 402}, {2, 403}, {3, 300}, {3, 301}, {4, 300}, {4, 301}})
        EXPECT_EQ(m_driver.isEnabled(host, id), isEnabled(shown, host, id)) << "command " << host << ' ' << id;
    const std::pair<const char*, int> rows[] = {{"tvSYB", shown.node},
                                                {"grdBillList", shown.bill},
                                                {"grdSpec", shown.feature},
                                                {"grdSpecEnum", shown.value},
                                                {"grdConcent", shown.contentRow}};
    for (const auto& [name, row] : rows)
        EXPECT_EQ(row, m_rows.value(QLatin1String(name), row)) << "the current row of " << name;
    if (m_blankRation) {
        EXPECT_TRUE(shown.ofContent(ContentCell::Level) == u"2" && shown.ofContent(ContentCell::ContDeID).isEmpty());
    }
    if (m_nodes == Nodes::Any)
        return;
    // As loaded, roots are open and all others closed, but for what the selected node needs; a tree that was cut short
    // at a code that has overflowed is not opened at all.
    const QStringList codes = m_library.chapterCodes();
    const bool cutShort = std::any_of(codes.begin(), codes.end(), overflows);
    for (qsizetype row = 0, node = 0; row < shown.tree.size(); ++row) {
        if (row + 1 == shown.tree.size() ||
            shown.tree[row + 1][depthCell].toInt() <= shown.tree[row][depthCell].toInt())
            continue;
        const bool aboveSelected = row < shown.node && shown.node < endOfSubtree(shown.tree, row);
        const bool loadedOpen = aboveSelected || (shown.tree[row][depthCell] == u"0" && !cutShort);
        EXPECT_EQ(shown.open[node++], m_nodes == Nodes::Open || (m_nodes == Nodes::AsLoaded && loadedOpen))
            << qPrintable(shown.tree[row][1]);
    }
}

bool Judge::isEnabled(const Snapshot& shown, int host, int id) const {
    const int level = shown.contentRow < 0 ? -1 : shown.ofContent(ContentCell::Level).toInt();
    const bool details = !m_prescribed.detailsLocked;
    switch (host * 1000 + id) {
        case 1100:
            return !shown.listsQuery;
        case 1101:
            return shown.node >= 0 && shown.chapter.size() < 6;
        case 1102:
        case 1103:
            return shown.node >= 0;
        case 1104:
        case 1105:
            return sibling(shown.tree, shown.node, id == 105) >= 0;
        case 2104:
            return !shown.listsQuery && shown.bill > 0;
        case 2105:
            return !shown.listsQuery && shown.bill >= 0 && shown.bill + 1 < shown.bills.size();
        case 2200:
            return !shown.listsQuery && shown.chapter.size() == 6;
        case 2201:
        case 2400:
        case 3300:
            return shown.bill >= 0;
        case 2401:
            return details && (level == 0 || level == 1);
        case 2402:
            return details && level > 0;
        case 2403:
            return details && level >= 0;
        case 3301:
            return details && shown.feature >= 0;
        case 4300:
            return details && shown.ofFeature(FeatureCell::Type) == u"2";
        case 4301:
            return details && shown.value >= 0;
        default:
            return true;
    }
}

bool Judge::isWritten(const Deed& deed, bool broken, const char* place) {
    if (broken)
        m_expected << QLatin1String(place);
    return !broken && !deed.failed;
}

void Judge::command(const Deed& deed) {
    if (!isEnabled(deed.before, deed.host, deed.id))
        return;
    if (deed.host == 1)
        chapterCommand(deed);
    else if (deed.host > 2)
        featureCommand(deed);
    else if (deed.id >= 400)
        contentCommand(deed);
    else
        billCommand(deed);
}

/// The new chapter stands at row `at` of the tree, whatever its code says.
void Judge::placeNewChapter(const Deed& deed, const QString& code, const QString& name, const QString& parent,
                            qsizetype at, int depth) {
    bool prescribed = code.size() != parent.size() + 2 || !code.startsWith(parent);
    for (const QString& other : m_library.chapterCodes())
        prescribed = prescribed || (other.size() > code.size() && other.startsWith(code)) ||
                     (overflows(other) && other.size() < code.size());
    if (prescribed && !m_prescribed.tree)
        m_prescribed.tree = deed.before.tree;
    if (m_prescribed.tree)
        m_prescribed.tree->insert(at, {QString::number(depth), code + u' ' + name, code});
    m_library.add("tblSYB", {{u"Code"_s, code}, {u"Name"_s, name}, {u"IsDel"_s, u"0"_s}});
    m_rows[u"tvSYB"_s] = static_cast<int>(at);
}

void Judge::chapterCommand(const Deed& deed) {
    const Snapshot& shown = deed.before;
    const Rows& tree = shown.tree;
    const qsizetype row = shown.node;
    const QString code = shown.chapter;
    const bool below = deed.id == 101;
    if (deed.id <= 102) {
        const QString old = deed.id == 102 ? tree[row][1].mid(code.size() + 1) : QString();
        EXPECT_EQ(deed.preset, old);
        m_expected << (deed.id == 100 ? u"添加清单目录"_s : below ? u"添加清单子目录"_s : u"修改清单目录"_s);
        const bool entered = deed.answer == Deed::Answer::Entered;
        const QString name = entered ? trimmed(deed.name) : deed.answer == Deed::Answer::BoxClosed ? old : QString();
        if (entered && name.isEmpty())
            m_expected << u"提示: 目录名不能不空！"_s;
        if (name.isEmpty())
            return;
        if (deed.id == 102) {
            if (!isWritten(deed, isBroken(name), "frmEditor."))
                return;
            for (const QString& id : m_library.ids("tblSYB", "Code", code))
                m_library.set("tblSYB", id, "Name", name);
            if (m_prescribed.tree)
                (*m_prescribed.tree)[row][1] = code + u' ' + name;
            return;
        }
        if (row < 0 && !tree.isEmpty()) {
            m_expected << u"frmEditor.mnuAddContent_Click"_s;
            return;
        }
        // Behind the last chapter beside the selected one, or below it.
        const qsizetype children = row + 1 < tree.size() && below && endOfSubtree(tree, row) > row + 1 ? row + 1 : -1;
        const qsizetype last = lastSibling(tree, below ? children : row);
        const QString lastCode = last < 0 ? QString() : tree[last][tagCell];
        const QString parent = below                                  ? code
                               : last < 0 || parentOf(tree, last) < 0 ? QString()
                                                                      : tree[parentOf(tree, last)][tagCell];
        const QString added =
            last < 0 ? parent + u"01"_s : neighbourCode(lastCode, static_cast<int>(lastCode.size()), true);
        if (m_library.hasChapter(added))
            m_expected << u"提示: 目录编号已经存在!"_s;
        else if (isWritten(deed, isBroken(name), "frmEditor.AddBillSYB"))
            placeNewChapter(deed, added, name, parent, last >= 0 ? endOfSubtree(tree, last) : row + 1,
                            row < 0 ? 0 : tree[row][depthCell].toInt() + (below ? 1 : 0));
    } else if (deed.id == 103) {
        m_expected << u"提示: 确实要删除 "_s + tree[row][1] + u" 吗?"_s;
        if (!deed.yes || deed.failed)
            return;
        m_library.deleteChapter(code);
        const qsizetype end = endOfSubtree(tree, row);
        const qsizetype before = sibling(tree, row, false);
        m_rows[u"tvSYB"_s] = static_cast<int>(sibling(tree, row, true) >= 0 ? row
                                              : before >= 0                 ? before
                                                                            : parentOf(tree, row));
        if (m_prescribed.tree)
            m_prescribed.tree->remove(row, end - row);
        if (m_prescribed.detailsOf != u"0" && m_library.cell("tblBill", m_prescribed.detailsOf, "Code").isEmpty())
            m_prescribed.detailsLocked = !snapshotOf(*m_driver.editor()).listsBills();
    } else if (deed.id <= 105) {
        const QString other = tree[sibling(tree, row, deed.id == 105)][tagCell];
        // Codes of different length, one of which has overflowed, cannot change places.
        if (deed.failed || code.size() != other.size())
            return;
        m_library.swapChapters(code, other);
        m_prescribed.tree.reset();
        m_nodes = Nodes::AsLoaded;
        const Snapshot after = snapshotOf(*m_driver.editor());
        EXPECT_TRUE(after.node < 0 || after.chapter == other) << qPrintable(other);
    } else if (deed.id >= 108) {
        m_nodes = deed.id == 108 ? Nodes::Open : Nodes::Closed;
        if (deed.id == 109 && !tree.isEmpty())
            m_rows[u"tvSYB"_s] = 0;
    }
}

/// The list stays in its order, from now until it is filled again.
void Judge::keepOrder(const Snapshot& shown) {
    if (!m_prescribed.bills)
        m_prescribed.bills = idsOf(shown.bills);
}

/// The bills from row `first` on get the next code, or the one before.
void Judge::shiftBills(const Snapshot& shown, int first, bool forward) {
    for (qsizetype row = first; row < shown.bills.size(); ++row) {
        const QString code = neighbourCode(shown.bills[row][BillCell::Code], 9, forward);
        m_library.recodeBill(shown.bills[row][BillCell::Id], code, false);
        if (code.left(6) != shown.chapter || code.size() != 9)
            keepOrder(shown);
    }
}

void Judge::billCommand(const Deed& deed) {
    const Snapshot& shown = deed.before;
    const int row = shown.bill;
    int& current = m_rows[u"grdBillList"_s];
    if (deed.id == 202) {
        m_query = deed.text;
        m_prescribed.bills.reset();
        m_rows = {{u"tvSYB"_s, -1}};
    } else if (deed.id == 201) {
        m_expected << u"清单库编辑器: 确认删除清单 %1 %2 ？"_s.arg(shown.ofBill(BillCell::Code),
                                                                   shown.ofBill(BillCell::Name));
        m_rows.clear();
        if (!deed.yes || deed.failed)
            return;
        m_library.deleteBill(shown.ofBill(BillCell::Id));
        if (shown.listsQuery && row + 1 < shown.bills.size())
            keepOrder(shown);
        shiftBills(shown, row + 1, false);
        if (m_prescribed.bills)
            m_prescribed.bills->removeAt(row);
        m_rows[u"grdBillList"_s] = qMin<int>(row, static_cast<int>(shown.bills.size()) - 2);
    } else if (deed.failed) {
        m_rows.clear();
    } else if (deed.id == 200) {
        const QString code = neighbourCode(row < 0 ? shown.chapter + u"000"_s : shown.ofBill(BillCell::Code), 9, true);
        if (code.left(6) != shown.chapter || code.size() != 9)
            keepOrder(shown);
        shiftBills(shown, row + 1, true);
        m_library.add("tblBill", {{u"Code"_s, code}, {u"IsDel"_s, u"0"_s}});
        current = row + 1;
        if (m_prescribed.bills)
            m_prescribed.bills->insert(row + 1, snapshotOf(*m_driver.editor()).bills[row + 1][BillCell::Id]);
    } else {
        const int other = deed.id == 104 ? row - 1 : row + 1;
        m_library.recodeBill(shown.bills[row][BillCell::Id], shown.bills[other][BillCell::Code], true);
        m_library.recodeBill(shown.bills[other][BillCell::Id], shown.bills[row][BillCell::Code], true);
        if (m_prescribed.bills)
            m_prescribed.bills->swapItemsAt(row, other);
        current = other;
    }
}

void Judge::featureCommand(const Deed& deed) {
    if (deed.failed)
        return;
    const Snapshot& shown = deed.before;
    const bool ofFeature = deed.host == 3;
    const Rows& rows = ofFeature ? shown.features : shown.values;
    const int row = ofFeature ? shown.feature : shown.value;
    const int count = static_cast<int>(rows.size());
    m_rows[ofFeature ? u"grdSpec"_s : u"grdSpecEnum"_s] = deed.id == 300 ? count : qMin(row, count - 2);
    if (deed.id == 301 && ofFeature)
        m_library.deleteFeature(rows[row][0]);
    else if (deed.id == 301)
        m_library.remove("tblSpecEnum", rows[row][0]);
    else if (ofFeature)
        m_library.add("tblBillSpec", {{u"BillID"_s, shown.ofBill(BillCell::Id)},
                                      {u"Name"_s, m_library.copyName("tblBillSpec", "Name", u"新建项目特征"_s)},
                                      {u"Type"_s, u"0"_s},
                                      {u"IsDel"_s, u"0"_s}});
    else
        m_library.add("tblSpecEnum", {{u"SpecID"_s, shown.ofFeature(FeatureCell::Id)}, {u"IsDel"_s, u"0"_s}});
}
