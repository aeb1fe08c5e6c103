// The outline of a KeyedGrid: levels, nodes and what is hidden below closed ones.

#include "app/controls/GridModel.h"
#include "app/controls/KeyedGrid.h"

void KeyedGrid::setOutlineColumn(const QString& key) {
    m_model->setOutlineColumn(column(key));
    viewport()->update();
}

int KeyedGrid::level(int row) const { return m_model->contains(row) ? m_model->row(row).level : 0; }

int KeyedGrid::nodeEnd(int row) const {
    int end = row + 1;
    while (end < rowCount() && level(end) > level(row))
        ++end;
    return end;
}

int KeyedGrid::nextSibling(int row) const {
    const int next = m_model->contains(row) ? nodeEnd(row) : rowCount();
    return next < rowCount() && level(next) == level(row) ? next : -1;
}

bool KeyedGrid::isCollapsed(int row) const { return m_model->contains(row) && m_model->row(row).collapsed; }

void KeyedGrid::setCollapsed(int row, bool collapsed) {
    if (!m_model->contains(row) || !m_model->isParent(row) || isCollapsed(row) == collapsed)
        return;
    const int end = nodeEnd(row);
    m_model->setCollapsed(row, collapsed);
    if (collapsed && this->row() > row && this->row() < end)
        setRow(row);
    clearMarks();
    updateHidden(row + 1, end);
    viewport()->update();
}

/// Hides the rows of [first, end) that lie below a closed node, shows the others.
void KeyedGrid::updateHidden(int first, int end) {
    int closed = -1;
    for (int row = 0; row < end; ++row) {
        if (closed >= 0 && level(row) <= level(closed))
            closed = -1;
        if (row >= first && isRowHidden(row) != (closed >= 0))
            setRowHidden(row, closed >= 0);
        if (closed < 0 && isCollapsed(row))
            closed = row;
    }
}

/// Opens the nodes that `row` lies in.
void KeyedGrid::expandAbove(int row) {
    // The way up to the node is as long as the node is large.
    if (!m_model->contains(row) || level(row) == 0 || !m_model->hasCollapsed())
        return;
    for (int above = row - 1, wanted = level(row); above >= 0 && wanted > 0; --above)
        if (level(above) < wanted) {
            wanted = level(above);
            setCollapsed(above, false);
        }
}

/// Left closes the node in the outline's column, Right opens it. False when there is nothing to close or open.
bool KeyedGrid::toggleByKey(int key) {
    const int row = this->row();
    if (m_column != m_model->outlineColumn() || row < 0 || !m_model->isParent(row))
        return false;
    if (key != (isCollapsed(row) ? Qt::Key_Right : Qt::Key_Left))
        return false;
    setCollapsed(row, !isCollapsed(row));
    return true;
}
