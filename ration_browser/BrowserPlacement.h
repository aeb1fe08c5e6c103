#pragma once

#include <QList>
#include <QRect>

class QWidget;

/// Where the ration browser stood when it was last closed, kept in the user's settings: position of the frame and size
/// of the content, in device-independent pixels.

/// Applies the remembered placement; what was never remembered, or makes no sense, stays as it is.
void restorePlacement(QWidget* window);

/// Remembers where the window stands now.
void savePlacement(const QWidget* window);

/// `placement`, or, when its title bar could not be reached on any of the `screens`, the middle of the first one. Never
/// larger than all screens together.
QRect broughtBack(QRect placement, const QList<QRect>& screens);
