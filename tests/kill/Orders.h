#pragma once

#include <QString>

/// What the user in the program is told to do, and what is heard of it.
///
/// The user writes a journal, line by line, each of which is in the file before anything else happens:
///   begin N    step N begins
///   content D  what the file holds now (a run that is checked only), see contentOf()
///   end N      the window shows the result of step N
///   changes N  as many operations changed files from the first step on
///   wrong T    something is not as it has to be
///   done       the program was closed as a user closes it
struct Orders {
    QString library;       ///< path, open in the program already
    QString journal;       ///< path
    unsigned seed = 1;     ///< of what is done
    int steps = 0;         ///< how much is done
    bool checked = false;  ///< every step is checked, and what the file holds is written down
    qint64 endAt = 0;  ///< the process is killed at this change of a file, counted from the first step; 0: it is not

    static Orders fromText(const QString& text);
    /// No comma in it: it goes through a list in an environment variable.
    QString toText() const;
};
