#pragma once

#include <Qt>

class KeyedGrid;
class QPoint;

/// When `button` is the right one and `position` (in the grid's viewport) is over a data cell, makes that cell current
/// and scrolls it into view, so that a context menu acts on the row that was clicked.
void SelectOneRowRClick(KeyedGrid* grid, Qt::MouseButton button, const QPoint& position);
