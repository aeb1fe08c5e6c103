#pragma once

#include <functional>

#include "benchmarks/EditorWindow.h"
#include "benchmarks/Measuring.h"

/// What a user does in a window with a library.
using Gesture = std::function<void(EditorWindow&)>;

/// What shows something, in a window that stays open: `before` it brings the window where it is to begin, and does not
/// count. `plain` reads the same rows.
std::function<Sides(int bills)> viewing(const Gesture& before, const Gesture& act, const QString& plain);

/// The same with the library without anything below its bills.
std::function<Sides(int bills)> viewingBareBills(const Gesture& before, const Gesture& act, const QString& plain);

/// What changes the library, in a new window on a copy that is as new each time.
struct MeasuredChange {
    QString prepare = {};  ///< statements that bring the library into the state in which it is changed
    Gesture before = {};   ///< what does not count; the full chapter is listed
    Gesture act;           ///< until the window shows the result
    QString plain;         ///< the cheapest statements that leave the same rows (LastUpdate aside)
    QString shown = {};    ///< reads what the window shows anew afterwards
};
std::function<Sides(int bills)> changing(const MeasuredChange& change);
