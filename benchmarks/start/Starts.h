#pragma once

#include <QStringList>

/// How a program starts, seen from outside: unchanged, on the display if there is one.
struct Start {
    double milliseconds = 0;  ///< from starting the process until its first window is painted
    double megabytes = 0;     ///< most memory that it held until then
};

/// Starts the editor, with a library when `arguments` names one, and ends it again. Throws Error when no window comes.
Start startEditor(const QStringList& arguments = {});

/// Starts the least program with a window of the same size.
Start startEmptyWindow();

/// Most memory, in MB, of an editor window in a process of its own, that has listed a hundred chapters and all bills of
/// `library` and shown the details of two hundred bills.
double memoryAfterUse(const QString& library);

/// Uses `library` in this process in that way and prints the peak memory; what memoryAfterUse starts.
void useLibrary(const QString& library);
inline constexpr char useOption[] = "--use";
