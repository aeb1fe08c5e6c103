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

/// Prints the most memory that the program takes with libraries of each size, beside an empty window, as Markdown.
void printMemory();

/// What printMemory() starts for each library: lists a hundred chapters and all bills, shows the details of two hundred
/// bills, prints the peak memory.
void useLibrary(const QString& library);
inline constexpr char useOption[] = "--use";
