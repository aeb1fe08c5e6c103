#include "app/controls/KeyedTree.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QTreeWidgetItemIterator>

#include "app/base/Error.h"
#include "app/controls/Marks.h"
#include "app/controls/Style.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int keyRole = Qt::UserRole;
constexpr int tagRole = Qt::UserRole + 1;

/// Rows with some air.
class NodeDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), option.fontMetrics.height() + 6};
    }

    QString displayText(const QVariant& value, const QLocale&) const override {
        return Theme::oneLine(value.toString());
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        // The colour of the selection tells the focus already.
        option->state &= ~QStyle::State_HasFocus;
    }
};
}  // namespace

KeyedTree::KeyedTree(QWidget* parent) : QTreeWidget(parent) {
    setColumnCount(1);
    header()->hide();
    header()->setStretchLastSection(true);
    setSelectionMode(SingleSelection);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(true);
    setTextElideMode(Qt::ElideRight);
    setItemDelegate(new NodeDelegate(this));
    QPalette colours = palette();
    colours.setColor(QPalette::Highlight, Theme::selection);
    colours.setColor(QPalette::Inactive, QPalette::Highlight, Theme::selectionWithoutFocus);
    colours.setColor(QPalette::HighlightedText, Theme::text);
    setPalette(colours);
}

void KeyedTree::clearNodes() {
    m_nodes.clear();
    clear();
}

KeyedTree::Node* KeyedTree::makeNode(const QString& key, const QString& text, const QString& tag) {
    if (m_nodes.contains(key))
        throw Error(35602, u"节点关键字不唯一: %1"_s.arg(key));
    auto* node = new Node({text});
    node->setData(0, keyRole, key);
    node->setData(0, tagRole, tag);
    m_nodes.insert(key, node);
    return node;
}

KeyedTree::Node* KeyedTree::addNode(Node* parent, const QString& key, const QString& text, const QString& tag) {
    Node* node = makeNode(key, text, tag);
    if (parent)
        parent->addChild(node);
    else
        addTopLevelItem(node);
    return node;
}

KeyedTree::Node* KeyedTree::addNodeAfter(Node* sibling, const QString& key, const QString& text, const QString& tag) {
    if (!sibling)
        return addNode(nullptr, key, text, tag);
    Node* node = makeNode(key, text, tag);
    if (Node* parent = sibling->parent())
        parent->insertChild(parent->indexOfChild(sibling) + 1, node);
    else
        insertTopLevelItem(indexOfTopLevelItem(sibling) + 1, node);
    return node;
}

void KeyedTree::removeNode(Node* node) {
    if (!node)
        return;
    Node* selected = selectedNode();
    bool goes = false;
    for (const Node* above = selected; above && !goes; above = above->parent())
        goes = above == node;
    if (goes) {
        selected = nextSibling(node);
        if (!selected)
            selected = previousSibling(node);
        if (!selected)
            selected = node->parent();
    }
    QList<Node*> removed{node};
    for (qsizetype i = 0; i < removed.size(); ++i) {
        Node* next = removed.at(i);
        m_nodes.remove(key(next));
        for (int child = 0; child < next->childCount(); ++child)
            removed.append(next->child(child));
    }
    delete node;
    selectNode(selected);
}

KeyedTree::Node* KeyedTree::node(const QString& key) const { return m_nodes.value(key); }

KeyedTree::Node* KeyedTree::selectedNode() const {
    const QList<Node*> selected = selectedItems();
    return selected.isEmpty() ? nullptr : selected.first();
}

void KeyedTree::selectNode(Node* node) {
    if (!node) {
        selectionModel()->clear();
        return;
    }
    setCurrentItem(node, 0, QItemSelectionModel::ClearAndSelect);
    scrollToItem(node);
}

QString KeyedTree::key(const Node* node) { return node ? node->data(0, keyRole).toString() : QString(); }

QString KeyedTree::tag(const Node* node) { return node ? node->data(0, tagRole).toString() : QString(); }

KeyedTree::Node* KeyedTree::previousSibling(const Node* node) const {
    const QModelIndex index = indexFromItem(node);
    return itemFromIndex(index.sibling(index.row() - 1, 0));
}

KeyedTree::Node* KeyedTree::nextSibling(const Node* node) const {
    const QModelIndex index = indexFromItem(node);
    return itemFromIndex(index.sibling(index.row() + 1, 0));
}

KeyedTree::Node* KeyedTree::lastSibling(const Node* node) const {
    const Node* above = node ? node->parent() : nullptr;
    if (above)
        return above->child(above->childCount() - 1);
    return node ? topLevelItem(topLevelItemCount() - 1) : nullptr;
}

QList<KeyedTree::Node*> KeyedTree::nodes() const {
    QList<Node*> all;
    all.reserve(m_nodes.size());
    for (QTreeWidgetItemIterator it(const_cast<KeyedTree*>(this)); *it; ++it)
        all.append(*it);
    return all;
}

void KeyedTree::setAllExpanded(bool expanded) {
    if (expanded)
        expandAll();
    else
        collapseAll();
}

bool KeyedTree::isOnArrow(const QPoint& position, const Node* node) const {
    const int left = visualItemRect(node).left();
    return node->childCount() > 0 && position.x() < left && position.x() >= left - indentation();
}

/// When the user has closed a node above the selected one, selects that node.
void KeyedTree::selectVisible() {
    Node* selected = selectedNode();
    Node* closed = nullptr;
    for (Node* above = selected ? selected->parent() : nullptr; above; above = above->parent())
        if (!above->isExpanded())
            closed = above;
    if (!closed)
        return;
    selectNode(closed);
    Q_EMIT nodeClick(closed);
}

void KeyedTree::mousePressEvent(QMouseEvent* event) {
    m_menuWanted = event->button() == Qt::RightButton;
    const QPoint position = event->position().toPoint();
    const Node* node = itemAt(position);
    m_pressed = event->button() == Qt::LeftButton && node;
    if (!m_pressed)
        return;
    const bool onArrow = isOnArrow(position, node);
    QTreeWidget::mousePressEvent(event);
    if (onArrow)
        selectVisible();
    else if (Node* selected = selectedNode())
        Q_EMIT nodeClick(selected);
}

void KeyedTree::mouseMoveEvent(QMouseEvent* event) {
    // Dragging selects nothing.
    if (event->buttons() == Qt::NoButton)
        QTreeWidget::mouseMoveEvent(event);
}

void KeyedTree::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        if (std::exchange(m_menuWanted, false))
            Q_EMIT contextMenuWanted(event->globalPosition().toPoint());
        return;
    }
    // The view would select on the release of a press that it never had.
    if (event->button() == Qt::LeftButton && std::exchange(m_pressed, false))
        QTreeWidget::mouseReleaseEvent(event);
}

void KeyedTree::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    const Node* node = itemAt(position);
    // The first of the two clicks selected nothing when it was on an arrow, or an edit elsewhere was refused.
    if (event->button() != Qt::LeftButton || !node || node != selectedNode() || isOnArrow(position, node)) {
        mousePressEvent(event);
        return;
    }
    QTreeWidget::mouseDoubleClickEvent(event);
    selectVisible();
}

void KeyedTree::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const Node* node = selectedNode();
    Q_EMIT contextMenuWanted(viewport()->mapToGlobal(node ? visualItemRect(node).bottomLeft() : QPoint(0, 0)));
}

void KeyedTree::keyPressEvent(QKeyEvent* event) {
    const Node* before = selectedNode();
    const int key = event->key();
    if (before && !event->modifiers() && (key == Qt::Key_F2 || key == Qt::Key_Delete)) {
        if (!event->isAutoRepeat())
            Q_EMIT(key == Qt::Key_F2 ? renameWanted() : deleteWanted());
        return;
    }
    QTreeWidget::keyPressEvent(event);
    Node* now = selectedNode();
    if (now && now != before)
        Q_EMIT nodeClick(now);
    else
        selectVisible();
}

void KeyedTree::focusInEvent(QFocusEvent* event) {
    // The item view between would make the first node current: it is left out.
    if (currentIndex().isValid())
        QTreeWidget::focusInEvent(event);
    else
        QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
}

bool KeyedTree::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QTreeWidget::viewportEvent(event);
    // Only a text that does not fit needs to be told in full.
    const auto* help = static_cast<QHelpEvent*>(event);
    const Node* node = itemAt(help->pos());
    const bool cut =
        node && fontMetrics().horizontalAdvance(Theme::oneLine(node->text(0))) + 8 > visualItemRect(node).width();
    QToolTip::showText(help->globalPos(), cut ? Theme::plainToolTip(node->text(0)) : QString(), this);
    return true;
}

QItemSelectionModel::SelectionFlags KeyedTree::selectionCommand(const QModelIndex& index, const QEvent* event) const {
    const auto command = QTreeWidget::selectionCommand(index, event);
    // Ctrl does not deselect: one node stays selected.
    if (command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle))
        return QItemSelectionModel::ClearAndSelect;
    return command;
}
