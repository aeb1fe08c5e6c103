#pragma once

#include <QList>
#include <QRect>

class QWidget;

/// Where the ration browser stood when it was last closed, kept in the user's settings.
///
/// Placements are those of the content, in device-independent pixels: a window learns the size of its frame only while
/// it is shown, so positions of the frame would shift by it now and then.

/// Applies the remembered placement; what was never remembered, or makes no sense, stays as it is. False when the user
/// has not chosen a place of his own yet.
bool restorePlacement(QWidget* window);

/// Remembers where the window stands now, and whether it was the user who put it there.
void savePlacement(const QWidget* window, bool chosenByUser);

/// `placement`, or, when its title bar could not be reached on any of the `screens`, the middle of the first one. Never
/// larger than all screens together.
QRect broughtBack(QRect placement, const QList<QRect>& screens);

/// A placement on `screen` that leaves `row` and its neighbours in sight: of the size `wanted` or, where there is less
/// room, down to `smallest`. Null when there is not even that.
QRect besideRow(const QRect& row, QSize wanted, QSize smallest, const QRect& screen);
