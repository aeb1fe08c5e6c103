#pragma once

#include <QHash>
#include <QTreeWidget>

/// A tree whose nodes are found by a unique key and carry a text and a free tag.
///
/// Selecting by program (selectNode, removeNode) never emits nodeClick(). The user's ways of selecting do, at once: the
/// press of the left button on a node, selected already or not, moving the selection with the keyboard, and closing a
/// node above the selected one, which selects the closed node. A right click selects nothing.
class KeyedTree : public QTreeWidget {
    Q_OBJECT

public:
    using Node = QTreeWidgetItem;

    explicit KeyedTree(QWidget* parent = nullptr);

    void clearNodes();
    int nodeCount() const { return static_cast<int>(m_nodes.size()); }

    /// Adds a node as the last child of `parent` (a root when null). Throws Error 35602 when the key is taken.
    Node* addNode(Node* parent, const QString& key, const QString& text, const QString& tag);
    /// Adds a node as the next sibling of `sibling`.
    Node* addNodeAfter(Node* sibling, const QString& key, const QString& text, const QString& tag);
    /// Removes the node with all nodes below it. When the selected node goes with it, its next sibling is selected,
    /// else the previous one, else the parent.
    void removeNode(Node* node);

    /// The node with that key, or null.
    Node* node(const QString& key) const;
    /// First node of the tree, or null.
    Node* firstNode() const { return topLevelItem(0); }
    Node* selectedNode() const;
    /// Selects the node and scrolls it into view (its parents open); null deselects.
    void selectNode(Node* node);

    static QString key(const Node* node);
    static QString tag(const Node* node);
    Node* previousSibling(const Node* node) const;
    Node* nextSibling(const Node* node) const;
    Node* lastSibling(const Node* node) const;
    /// Every node, in the order in which the tree shows them.
    QList<Node*> nodes() const;
    void setAllExpanded(bool expanded);

Q_SIGNALS:
    void nodeClick(QTreeWidgetItem* node);
    /// F2 was pressed while a node is selected.
    void renameWanted();
    /// Delete was pressed while a node is selected. Holding the key down tells it once.
    void deleteWanted();
    /// A context menu is wanted at a global position: right button released, or the menu key.
    void contextMenuWanted(const QPoint& position);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

private:
    Node* makeNode(const QString& key, const QString& text, const QString& tag);
    bool isOnArrow(const QPoint& position, const Node* node) const;
    void selectVisible();

    QHash<QString, Node*> m_nodes;
    bool m_menuWanted = false;
    bool m_pressed = false;
};
