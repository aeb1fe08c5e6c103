// What commands do to chapters, and what the tree must show of that.

#include "tests/walk/Judge.h"

namespace {

constexpr int depthCell = 0, textCell = 1, tagCell = 2;

/// Of what all chapters hang from, too: that is row -1.
int depthOf(const Rows& tree, qsizetype row) { return row < 0 ? -1 : tree[row][depthCell].toInt(); }

/// The next row in steps of `step` that is no deeper.
qsizetype pass(const Rows& tree, qsizetype row, int step) {
    const int depth = depthOf(tree, row);
    do
        row += step;
    while (row >= 0 && row < tree.size() && depthOf(tree, row) > depth);
    return row;
}

qsizetype parentOf(const Rows& tree, qsizetype row) {
    const int depth = depthOf(tree, row);
    while (row >= 0 && depthOf(tree, row) >= depth)
        --row;
    return row;
}

bool overflows(const QString& code) { return code.size() % 2 == 1 || code.size() > 6; }

}  // namespace

qsizetype Judge::sibling(const Rows& tree, qsizetype row, int step) {
    const qsizetype next = row < 0 ? -1 : pass(tree, row, step);
    return next < tree.size() && depthOf(tree, next) == depthOf(tree, row) ? next : -1;
}

/// As loaded, roots are open and all others closed, but for what the selected node needs; a tree that was cut short at
/// a code that has overflowed is not opened at all.
void Judge::checkNodes(const Snapshot& shown) {
    const QStringList codes = m_library.run("SELECT Code FROM tblSYB");
    const bool cutShort = std::any_of(codes.begin(), codes.end(), overflows);
    for (qsizetype row = 0, node = 0; row < shown.tree.size(); ++row) {
        const qsizetype end = pass(shown.tree, row, 1);
        if (end == row + 1)
            continue;
        const bool aboveSelected = row < shown.node && shown.node < end;
        const bool loadedOpen = aboveSelected || (depthOf(shown.tree, row) == 0 && !cutShort);
        EXPECT_EQ(shown.open[node++], m_led.nodes == Nodes::Open || (m_led.nodes == Nodes::AsLoaded && loadedOpen))
            << qPrintable(shown.tree[row][textCell]);
    }
}

void Judge::chapterCommand(const Deed& deed) {
    const Rows& tree = deed.before.tree;
    const qsizetype row = deed.before.node;
    const QString code = deed.before.chapter;
    if (deed.command <= 1101) {
        addChapter(deed);
    } else if (deed.command == 1102) {
        const QString name = nameOfChapter(deed, u"修改清单目录"_s, tree[row][textCell].mid(code.size() + 1));
        if (name.isEmpty() || !isWritten(deed, isBroken(name), "frmEditor."))
            return;
        m_library.run("UPDATE tblSYB SET Name=? WHERE Code=?", {name, code});
        if (m_prescribed.tree)
            (*m_prescribed.tree)[row][textCell] = code + u' ' + name;
    } else if (deed.command == 1103) {
        m_expected << u"提示: 确实要删除 "_s + tree[row][textCell] + u" 吗?"_s;
        if (!deed.yes || deed.failed)
            return;
        m_library.run("DELETE FROM tblSYB WHERE Code=?", {code});
        const qsizetype before = sibling(tree, row, -1);
        m_led.rows[u"tvSYB"_s] = static_cast<int>(sibling(tree, row, 1) >= 0 ? row
                                                  : before >= 0              ? before
                                                                             : parentOf(tree, row));
        if (m_prescribed.tree)
            m_prescribed.tree->remove(row, pass(tree, row, 1) - row);
        if (m_prescribed.detailsOf != u"0" &&
            m_library.run("SELECT 1 FROM tblBill WHERE ID=?", {m_prescribed.detailsOf}).isEmpty())
            m_prescribed.detailsLocked = !snapshotOf(*m_driver.editor()).listsBills();
    } else if (deed.command <= 1105) {
        const QString other = tree[sibling(tree, row, deed.command == 1105 ? 1 : -1)][tagCell];
        // Codes of different length, one of which has overflowed, cannot change places.
        if (deed.failed || code.size() != other.size())
            return;
        // Codes that begin with the stand-in of the swap are swept along with those of the other.
        for (const QString& table : {u"tblSYB"_s, u"tblBill"_s, u"tblCont"_s})
            m_library.rows(
                u"UPDATE %1 SET Code=iif(substr(Code,1,length(?1))=?1,?2,?1)||substr(Code,length(?1)+1) "
                "WHERE substr(Code,1,length(?1)) IN (?1,?2,?3)"_s.arg(table),
                {code, other, QString(code.size(), u'0')});
        m_prescribed.tree.reset();
        m_led.nodes = Nodes::AsLoaded;
        const Snapshot after = snapshotOf(*m_driver.editor());
        EXPECT_TRUE(after.node < 0 || after.chapter == other) << qPrintable(other);
    } else if (deed.command >= 1108) {
        m_led.nodes = deed.command == 1108 ? Nodes::Open : Nodes::Closed;
        if (deed.command == 1109 && !tree.isEmpty())
            m_led.rows[u"tvSYB"_s] = 0;
    }
}

/// The name that was given to a chapter named `old`; empty when none was.
QString Judge::nameOfChapter(const Deed& deed, const QString& title, const QString& old) {
    EXPECT_EQ(deed.preset, old);
    m_expected << title;
    if (deed.answer != Deed::Answer::Entered)
        return deed.answer == Deed::Answer::BoxClosed ? old : QString();
    const QString name = trimmed(deed.name);
    if (name.isEmpty())
        m_expected << u"提示: 目录名不能不空！"_s;
    return name;
}

/// The new chapter stands behind all others below the same parent, whatever its code says.
void Judge::addChapter(const Deed& deed) {
    const Rows& tree = deed.before.tree;
    const int row = deed.before.node;
    const bool below = deed.command == 1101;
    const QString name = nameOfChapter(deed, below ? u"添加清单子目录"_s : u"添加清单目录"_s, QString());
    if (name.isEmpty())
        return;
    if (row < 0 && !tree.isEmpty()) {
        m_expected << u"frmEditor.mnuAddContent_Click"_s;
        return;
    }
    const qsizetype parent = below ? row : parentOf(tree, row);
    const int depth = depthOf(tree, parent) + 1;
    const qsizetype at = pass(tree, parent, 1);
    qsizetype last = at - 1;
    while (depthOf(tree, last) > depth)
        --last;
    const QString above = parent < 0 ? QString() : tree[parent][tagCell];
    const QString before = last == parent ? above + u"00"_s : tree[last][tagCell];
    const QString code = neighbourCode(before, static_cast<int>(before.size()), true);
    if (!m_library.run("SELECT 1 FROM tblSYB WHERE Code=?", {code}).isEmpty()) {
        m_expected << u"提示: 目录编号已经存在!"_s;
        return;
    }
    if (!isWritten(deed, isBroken(name), "frmEditor.AddBillSYB"))
        return;
    bool prescribed = code.size() != above.size() + 2 || !code.startsWith(above);
    for (const QString& other : m_library.run("SELECT Code FROM tblSYB"))
        prescribed = prescribed || (other.size() > code.size() && other.startsWith(code)) ||
                     (overflows(other) && other.size() < code.size());
    if (prescribed && !m_prescribed.tree)
        m_prescribed.tree = tree;
    if (m_prescribed.tree)
        m_prescribed.tree->insert(at, {QString::number(depth), code + u' ' + name, code});
    m_library.run("INSERT INTO tblSYB(Code,Name,IsDel) VALUES(?,?,0)", {code, name});
    m_led.rows[u"tvSYB"_s] = static_cast<int>(at);
}
