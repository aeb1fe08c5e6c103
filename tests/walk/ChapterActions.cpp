// What the user does with chapters.

#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "app/base/Text.h"
#include "tests/walk/RandomUser.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

QString chapterLine(const QString& code, const QString& name) { return code + u' ' + name; }

qsizetype endOfSubtree(const Rows& tree, qsizetype row) {
    const int depth = tree[row][0].toInt();
    do
        ++row;
    while (row < tree.size() && tree[row][0].toInt() > depth);
    return row;
}

bool broken(const QString& text) { return text.contains(u'\''); }

}  // namespace

void RandomUser::clickChapter() {
    const QList<KeyedTree::Node*> nodes = m_driver.tree()->nodes();
    if (nodes.isEmpty())
        return;
    KeyedTree::Node* node = nodes[upTo(static_cast<int>(nodes.size()))];
    // Most often one that has bills.
    for (int tries = 0; tries < 4 && KeyedTree::tag(node).size() != 6; ++tries)
        node = nodes[upTo(static_cast<int>(nodes.size()))];
    say(u"click chapter "_s + node->text(0));
    const QString code = KeyedTree::tag(node);
    m_driver.click(node);
    EXPECT_EQ(m_driver.chapter(), code);
}

void RandomUser::walkTree() {
    walk(m_driver.tree(),
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown});
}

/// Prepares to answer the dialog in one of the user's ways; gives the name that it hands over.
QString RandomUser::answerNameDialog(const QString& caption, const QString& preset) {
    enum Way { Enter, Button, Cancel, Escape, CloseBox, OnlyBlanks };
    const Way way = oneOf({Enter, Enter, Enter, Enter, Button, Button, Cancel, Escape, CloseBox, OnlyBlanks});
    const QString typed = way == OnlyBlanks ? u"   "_s : anyText().replace(u'\n', u' ');
    const QString name = trimBlanks(typed);
    const bool refused = (way == Enter || way == Button || way == OnlyBlanks) && name.isEmpty();
    m_expected << caption;
    m_answers->then([=](QWidget* dialog) {
        auto* box = dialog->findChild<QLineEdit*>(u"txtContent"_s);
        auto* ok = dialog->findChild<QPushButton*>(u"cmdOK"_s);
        auto* cancel = dialog->findChild<QPushButton*>(u"cmdCancel"_s);
        ASSERT_TRUE(box && ok && cancel);
        EXPECT_EQ(dialog->windowTitle(), caption);
        EXPECT_EQ(box->text(), preset);
        EXPECT_EQ(box->selectedText(), preset);
        EditorDriver::typeOver(box, typed);
        if (way == Enter)
            QTest::keyClick(box, Qt::Key_Return);
        else if (way == Button || way == OnlyBlanks)
            QTest::mouseClick(ok, Qt::LeftButton);
        else if (way == Cancel)
            QTest::mouseClick(cancel, Qt::LeftButton);
        else if (way == Escape)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            dialog->close();
        if (refused) {
            EXPECT_TRUE(dialog->isVisible());
            QTest::keyClick(box, Qt::Key_Escape);
        }
    });
    if (refused) {
        m_answers->press(QMessageBox::Ok);
        m_expected << u"提示: 目录名不能不空！"_s;
    }
    if (way == CloseBox)
        return preset;
    return way == Enter || way == Button ? name : QString();
}

qsizetype RandomUser::selectedTreeRow() const {
    return m_driver.tree()->nodes().indexOf(m_driver.tree()->selectedNode());
}

/// The new chapter stands at row `at` of the tree, whatever its code says.
void RandomUser::placeNewChapter(const QString& code, const QString& name, const QString& parent, int at, int depth) {
    const bool overflows = code.size() != parent.size() + 2 || !code.startsWith(parent);
    const bool orphans = inFile(sql("SELECT ID FROM tblSYB WHERE Code LIKE '", code, "_%'"));
    const bool beyondStop =
        inFile(sql("SELECT ID FROM tblSYB WHERE ID IN (", overflowedChapters, ") AND length(Code)<", code.size()));
    if (overflows || beyondStop || orphans || m_prescribed.tree) {
        if (!m_prescribed.tree)
            m_prescribed.tree = m_comparison.last().tree;
        m_prescribed.tree->insert(at, {QString::number(depth), chapterLine(code, name), code});
    }
    m_codes.addChapter(code);
    EXPECT_EQ(m_driver.chapter(), code);
}

void RandomUser::addChapter() {
    KeyedTree* tree = m_driver.tree();
    KeyedTree::Node* selected = tree->selectedNode();
    const KeyedTree::Node* last = selected ? tree->lastSibling(selected) : nullptr;
    const QString lastCode = KeyedTree::tag(last);
    // Behind a code that has overflowed there is no next one.
    if (lastCode.size() % 2 == 1)
        return;
    say(u"add a chapter behind "_s + lastCode);
    EXPECT_EQ(m_driver.isEnabled(1, 100), m_driver.bills()->tag() != u"1"_s);
    if (!m_driver.isEnabled(1, 100)) {
        run(1, 100);
        return;
    }
    const QString name = answerNameDialog(u"添加清单目录"_s, {});
    const QString code = last ? neighbourCode(lastCode, static_cast<int>(lastCode.size()), true) : u"01"_s;
    const bool exists = inFile(sql("SELECT ID FROM tblSYB WHERE Code='", code, "'"));
    const Rows before = m_prescribed.tree.value_or(rowsOf(tree));
    const qsizetype at = last ? endOfSubtree(before, tree->nodes().indexOf(const_cast<KeyedTree::Node*>(last))) : 0;
    const int depth = last ? before[selectedTreeRow()][0].toInt() : 0;
    const QString parent = last && last->parent() ? KeyedTree::tag(last->parent()) : QString();
    const bool lost = !last && !before.isEmpty();
    run(1, 100);
    if (name.isEmpty())
        return;
    if (lost)
        expectError("frmEditor.mnuAddContent_Click");
    else if (exists)
        m_expected << u"提示: 目录编号已经存在!"_s;
    else if (broken(name))
        expectError("frmEditor.AddBillSYB");
    else if (!failed())
        placeNewChapter(code, name, parent, static_cast<int>(at), depth);
}

void RandomUser::addSubChapter() {
    const KeyedTree::Node* parent = m_driver.tree()->selectedNode();
    const QString parentCode = KeyedTree::tag(parent);
    say(u"add a chapter below "_s + parentCode);
    if (!m_driver.isEnabled(1, 101)) {
        EXPECT_TRUE(!parent || parentCode.size() >= 6);
        run(1, 101);
        return;
    }
    const QString name = answerNameDialog(u"添加清单子目录"_s, {});
    const int children = parent->childCount();
    const QString last = children > 0 ? KeyedTree::tag(parent->child(children - 1)) : QString();
    const QString code = children > 0 ? neighbourCode(last, static_cast<int>(last.size()), true) : parentCode + u"01"_s;
    const bool none = last.size() % 2 == 1;
    const bool exists = inFile(sql("SELECT ID FROM tblSYB WHERE Code='", code, "'"));
    const Rows before = m_prescribed.tree.value_or(rowsOf(m_driver.tree()));
    const qsizetype row = selectedTreeRow();
    run(1, 101);
    if (name.isEmpty() || none)
        return;
    if (exists)
        m_expected << u"提示: 目录编号已经存在!"_s;
    else if (broken(name))
        expectError("frmEditor.AddBillSYB");
    else if (!failed())
        placeNewChapter(code, name, parentCode, static_cast<int>(endOfSubtree(before, row)),
                        before[row][0].toInt() + 1);
}

void RandomUser::renameChapter() {
    const KeyedTree::Node* node = m_driver.tree()->selectedNode();
    say(u"rename chapter "_s + m_driver.chapter());
    if (!node) {
        EXPECT_FALSE(m_driver.isEnabled(1, 102));
        run(1, 102);
        return;
    }
    const QString code = m_driver.chapter();
    const QString name = answerNameDialog(u"修改清单目录"_s, node->text(0).mid(code.size() + 1));
    const qsizetype row = selectedTreeRow();
    run(1, 102);
    if (name.isEmpty())
        return;
    if (broken(name))
        expectError("frmEditor.");
    else if (!failed() && m_prescribed.tree)
        (*m_prescribed.tree)[row][1] = chapterLine(code, name);
}

void RandomUser::deleteChapter() {
    const KeyedTree::Node* node = m_driver.tree()->selectedNode();
    say(u"delete chapter "_s + m_driver.chapter());
    if (!node) {
        EXPECT_FALSE(m_driver.isEnabled(1, 103));
        run(1, 103);
        return;
    }
    const bool yes = chance(80);
    m_answers->press(yes ? QMessageBox::Yes : QMessageBox::No);
    m_expected << u"提示: 确实要删除 "_s + node->text(0) + u" 吗?"_s;
    const QString code = m_driver.chapter();
    KeyedTree* tree = m_driver.tree();
    const KeyedTree::Node* next = tree->nextSibling(node);
    if (!next)
        next = tree->previousSibling(node);
    if (!next)
        next = node->parent();
    const QString nextCode = KeyedTree::tag(next);
    const Rows before = rowsOf(tree);
    const qsizetype row = selectedTreeRow();
    run(1, 103);
    if (!yes)
        return;
    if (failed()) {
        // What was deleted before the error stays deleted.
        expectHalfDone();
        return;
    }
    m_codes.deleteChapter(code);
    EXPECT_EQ(m_driver.chapter(), nextCode);
    if (m_prescribed.tree)
        m_prescribed.tree->remove(row, endOfSubtree(before, row) - row);
    m_prescribed.detailsLocked =
        m_prescribed.detailsLocked ||
        (m_prescribed.detailsOf != u"0"_s && !inFile(sql("SELECT ID FROM tblBill WHERE ID=", m_prescribed.detailsOf)));
}

void RandomUser::moveChapter() {
    KeyedTree* tree = m_driver.tree();
    const KeyedTree::Node* node = tree->selectedNode();
    const bool up = chance(50);
    const int id = up ? 104 : 105;
    const KeyedTree::Node* sibling = !node ? nullptr : up ? tree->previousSibling(node) : tree->nextSibling(node);
    const QString code = m_driver.chapter();
    const QString other = KeyedTree::tag(sibling);
    say(u"swap chapters %1 and %2"_s.arg(code, other));
    EXPECT_EQ(m_driver.isEnabled(1, id), sibling != nullptr);
    run(1, id);
    // Codes of different length, one of which has overflowed, cannot change places.
    if (!sibling || failed() || code.size() != other.size())
        return;
    m_codes.swapChapters(code, other);
    m_prescribed.treeLoaded();
    if (!m_driver.chapter().isEmpty()) {
        EXPECT_EQ(m_driver.chapter(), other);
    }
    // Roots are open and all others closed again, but for what the selected node needs; a tree that was cut short at a
    // code that has overflowed is not opened at all.
    const bool cutShort = inFile(overflowedChapters);
    QList<const KeyedTree::Node*> open;
    for (const KeyedTree::Node* above = tree->selectedNode(); above && above->parent(); above = above->parent())
        open << above->parent();
    for (const KeyedTree::Node* each : tree->nodes()) {
        if (each->childCount() > 0) {
            EXPECT_EQ(each->isExpanded(), open.contains(each) || (!each->parent() && !cutShort))
                << qPrintable(each->text(0));
        }
    }
}

void RandomUser::openOrCloseNodes() {
    const int id = oneOf({106, 107, 108, 108, 109});
    say(u"tree command %1"_s.arg(id));
    run(1, id);
    if (id == 109 && m_driver.tree()->nodeCount() > 0) {
        EXPECT_EQ(m_driver.tree()->selectedNode(), m_driver.tree()->firstNode());
    }
}
