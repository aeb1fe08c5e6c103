#pragma once

#include <Qt>

class QMdiArea;

/// Arranges the child windows that are not minimised so that together they fill the area: horizontally one above the
/// other, vertically side by side. When the strips would become too narrow to work in, they stand in several rows or
/// columns. The active window comes first and stays active.
void tileSubWindows(QMdiArea* area, Qt::Orientation orientation);
