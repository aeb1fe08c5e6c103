#pragma once

#include <QWidget>

#include "app/controls/KeyedTree.h"

class LibraryDocument;
class QToolBar;
class QVBoxLayout;

/// The chapters of a library as a tree, and the commands that change them.
///
/// The selected node's tag is the current chapter's code. A command writes to the library first and changes the tree
/// only after that succeeded; errors are recorded by the procedure that met them.
class ChapterPane : public QWidget {
    Q_OBJECT

public:
    /// Shows the chapters of `library` and tells it which one is current.
    explicit ChapterPane(LibraryDocument& library, QWidget* parent = nullptr);

    KeyedTree* tvSYB() const { return m_tvSYB; }

    /// Lays the toolbar out above the tree.
    void addToolBar(QToolBar* bar);

    /// Rebuilds the tree from the library and selects its first node, without a node click. See buildChapterTree().
    void CreateTvwSYB();

    /// Rebuilds the tree and opens the nodes that were open. Gives the code of the chapter that is selected then:
    /// `code`, or the nearest one above it that there is, or the first; empty when there is none to select.
    QString showAfresh(const QString& code);

    /// The one place where the user's choice of a chapter is handled: selects the node and has its bills listed.
    void tvSYB_NodeClick(KeyedTree::Node* node);

    void mnuAddContent_Click();
    void mnuAddSubContent_Click();
    void mnuModifyContent_Click();
    void mnuDeleteContent_Click();
    void mnuMoveContentUp_Click();
    void mnuMoveContentDown_Click();
    void expandAll();
    void collapseAll();

Q_SIGNALS:
    /// The tree's context menu is wanted at a global position.
    void contextMenuWanted(const QPoint& position);

private:
    void selectCurrentChapter();
    QString askName(const QString& caption, const QString& preset = QString());
    void swapWith(const KeyedTree::Node* sibling);

    LibraryDocument& m_library;
    QVBoxLayout* m_layout;
    KeyedTree* m_tvSYB;
};
