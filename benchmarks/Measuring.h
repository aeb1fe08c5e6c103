#pragma once

#include <QRegularExpression>
#include <QString>
#include <chrono>
#include <functional>
#include <vector>

/// Measures what a user does beside the same work in plain SQLite calls, in the same run.

/// Milliseconds that `action` takes.
template <typename Action>
double milliseconds(Action&& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// One side of a comparison: prepares what it needs, does its work once and gives the milliseconds of the work alone.
using Side = std::function<double()>;

struct Sides {
    Side ours;
    Side plain;
    /// The same as plain on a library that has the fitting indexes; where there is none to have, as plain.
    Side indexed = {};
};

/// What an action may cost on a library of national size (6,000 bills): `factor` times the indexed side and `extra`
/// milliseconds, and never more than `longest`, after which a user notices that the window does not answer. In a
/// library of ten times that, at most `growth` times as much, where that is limited. Other sizes are measured to see
/// growth.
struct CostLimit {
    double factor = 0;
    double extra = 0;
    double longest = 100;
    double growth = 0;
};

enum class LibrarySize {
    None,   ///< measured once: does not depend on the library
    Every,  ///< measured on libraries of 600, 6,000 and 60,000 bills
};

/// A row of the table of what is measured.
struct MeasuredAction {
    const char* name;
    LibrarySize size;
    int runs;  ///< a third of them on the largest library; a short action, which mostly waits for the disk, needs more
    CostLimit limit;
    /// Prepares both sides on a library of that many bills. Throws Error when they do not come to the same.
    std::function<Sides(int bills)> prepare;
    bool leads = false;  ///< among the rows that a reader wants first
};

/// Measures the actions whose "name/bills" matches `filter`, both sides in turn, and prints the results as Markdown,
/// as docs/performance.md has them. Gives how many actions cost more than they may, or failed.
int measure(const std::vector<MeasuredAction>& actions, const QRegularExpression& filter);
