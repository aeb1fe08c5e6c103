#pragma once

#include <QStringList>
#include <QTextStream>

/// The command tessel-libraries: makes ration libraries from CSV files and keeps the list of them in tessel.dat, both
/// in the program folder (appPath, dataPath). `arguments` are those behind the program's name.
///
/// What was done and what is worth knowing goes to `said`, mistakes to `complained`. The result is the process's exit
/// code: 0 done; 1 mistakes in the CSV files or in what was asked for; 2 the command cannot be understood. Nothing has
/// been written after 1 and 2. Throws Error when a file cannot be read or written; then, too, every file is the old one
/// or a complete new one.
int runLibrariesCommand(const QStringList& arguments, QTextStream& said, QTextStream& complained);
