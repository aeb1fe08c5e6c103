#include "app/controls/SelectOneRowRClick.h"

#include "app/controls/KeyedGrid.h"

void SelectOneRowRClick(KeyedGrid* grid, Qt::MouseButton button, const QPoint& position) {
    if (!grid || button != Qt::RightButton)
        return;
    const QModelIndex cell = grid->indexAt(position);
    if (cell.isValid())
        grid->setCell(cell.row(), grid->key(cell.column()));
}
