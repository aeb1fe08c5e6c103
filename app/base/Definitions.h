#pragma once

#include <QString>

class FileSystem;
class clsErrorLog;

/// Process-wide variables. The paths are filled once, by SetBasePrm at start-up, and only read afterwards; the two
/// objects are made on first use and live until the process ends.

/// The program folder with a closing separator; the system database is `appPath` + "tessel.dat".
extern QString appPath;

/// The Data folder with a closing separator: root of the ration-library files, home of new bill libraries.
extern QString dataPath;

/// The command line as one untrimmed text; empty when it is blank.
extern QString cmdFile;

/// The single writer of error records.
clsErrorLog& errLog();

/// The file-system object behind every existence test, folder creation, deletion and extension test.
FileSystem& fso();

/// The title of message boxes that have none of their own, and of the main window.
QString applicationTitle();

/// "1.0.0": major, minor and revision of the program.
QString applicationVersion();
