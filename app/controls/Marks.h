#pragma once

#include <QRect>
#include <QString>

class QPainter;

/// The small marks that grids and trees share.
namespace Theme {

inline constexpr int checkSize = 15;

/// The arrow of an outline node, in the middle of `rect`.
void drawArrow(QPainter* painter, const QRect& rect, bool open);
/// A check box of checkSize at the upper left of `rect`.
void drawCheck(QPainter* painter, const QRect& rect, bool checked);
/// A button with an ellipsis, as large as `rect`.
void drawButton(QPainter* painter, const QRect& rect);
/// The mark of the current row, in the middle of `rect`.
void drawRowMarker(QPainter* painter, const QRect& rect);

/// The beginning of `text` in one line: as much as the widest window could show. Laying out a text of megabytes takes
/// seconds.
QString oneLine(const QString& text);

/// A tool tip that shows the beginning of `text` literally and breaks long lines.
QString plainToolTip(const QString& text);

}  // namespace Theme
