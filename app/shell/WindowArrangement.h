#pragma once

#include <Qt>

class QMdiArea;
class QMdiSubWindow;

/// Shows `window`, also when it is minimised, above the others and makes it the active one.
void bringToFront(QMdiArea* area, QMdiSubWindow* window);

/// Gives a window that is neither maximised nor minimised a size to work in and a place wholly inside the area, a step
/// away from that of the window before it.
void placeSubWindow(QMdiArea* area, QMdiSubWindow* window);

/// Arranges the child windows that are not minimised one behind the other, so that the title of each can be seen; the
/// active one stands in front.
void cascadeSubWindows(QMdiArea* area);

/// Arranges the child windows that are not minimised so that together they fill the area: horizontally one above the
/// other, vertically side by side. When the strips would become too narrow to work in, they stand in several rows or
/// columns. The active window comes first and stays active.
void tileSubWindows(QMdiArea* area, Qt::Orientation orientation);
