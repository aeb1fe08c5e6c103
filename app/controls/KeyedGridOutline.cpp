// The outline of a KeyedGrid: levels, nodes and what is hidden below closed ones.

#include "app/controls/GridModel.h"
#include "app/controls/KeyedGrid.h"

void KeyedGrid::setOutlineColumn(const QString& key) {
    m_outlineColumn = column(key);
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
    if (collapsed && m_row > row && m_row < end)
        setRow(row);
    updateHidden(row + 1, end);
    viewport()->update();
}

/// Hides the rows of [first, end) that lie below a closed node, shows the others. The view learns of rows filled in
/// while redrawing is off only later.
void KeyedGrid::updateHidden(int first, int end) {
    if (m_model->isCollecting() && m_model->isPending())
        return;
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

bool KeyedGrid::toggleByKey(int key) {
    if (m_outlineColumn < 0 || m_column != m_outlineColumn || m_row < 0 || !m_model->isParent(m_row))
        return false;
    const bool closes = key == Qt::Key_Minus || key == Qt::Key_Left;
    const bool opens = key == Qt::Key_Plus || key == Qt::Key_Right;
    if (!(closes && !isCollapsed(m_row)) && !(opens && isCollapsed(m_row)))
        return key == Qt::Key_Minus || key == Qt::Key_Plus;
    setCollapsed(m_row, closes);
    return true;
}
