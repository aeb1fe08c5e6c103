#pragma once

#include <QWidget>
#include <functional>

#include "app/controls/KeyedTree.h"

class Connection;
class QToolBar;
class QVBoxLayout;

/// The chapters of a library as a tree, and the commands that change them.
///
/// The selected node's tag is the current chapter's code. A command writes to the library first and changes the tree
/// only after that succeeded; errors are recorded by the procedure that met them.
class ChapterPane : public QWidget {
    Q_OBJECT

public:
    explicit ChapterPane(QWidget* parent = nullptr);

    /// The library to work on, owned by the caller; null when it could not be opened.
    void setConnection(Connection* ormConn) { m_ormConn = ormConn; }

    KeyedTree* tvSYB() const { return m_tvSYB; }

    /// Lays the toolbar out above the tree.
    void addToolBar(QToolBar* bar);

    /// Rebuilds the tree from the library and selects its first node, without a node click. See buildChapterTree().
    void CreateTvwSYB();

    /// The one place where a change of the current chapter is handled: selects the node and calls chapterClicked.
    void tvSYB_NodeClick(KeyedTree::Node* node);

    void mnuAddContent_Click();
    void mnuAddSubContent_Click();
    void mnuModifyContent_Click();
    void mnuDeleteContent_Click();
    void mnuMoveContentUp_Click();
    void mnuMoveContentDown_Click();
    void expandAll();
    void collapseAll();

    /// The chapter `tag` is current now: its bills are to be listed when it is on the deepest level, six characters
    /// long, and the list is to be emptied otherwise (empty when no chapter is current).
    std::function<void(const QString& tag)> chapterClicked;

    /// A chapter has been deleted, perhaps with bills; the node click on the new current chapter comes afterwards.
    std::function<void()> chapterDeleted;

Q_SIGNALS:
    /// The tree's context menu is wanted at a global position.
    void contextMenuWanted(const QPoint& position);

private:
    QString askName(const QString& caption, const QString& preset = QString());
    void swapWith(const KeyedTree::Node* sibling);

    Connection* m_ormConn = nullptr;
    QVBoxLayout* m_layout;
    KeyedTree* m_tvSYB;
};
