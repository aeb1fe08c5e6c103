#pragma once

#include <QString>

/// The rollback journal of a library whose program was ended in the middle of a change lies beside the file, and SQLite
/// plays it back into whatever file has that name when it is opened next. A copy that has been laid over the library
/// meanwhile is destroyed by that.
///
/// Whether the journal that SQLite would now play back into the plain file at `path` is another file's. The count of
/// changes in the first page tells: a change writes that page with the count one higher than in the journal's copy of
/// it, so that a file that the journal belongs to has the one or the other. A journal without that page, of a change
/// that had come no further than to run out of memory, is not judged. Nothing is changed. False when the file cannot be
/// read or another program has it in hand.
[[nodiscard]] bool isJournalOfAnotherFile(const QString& path);

/// Adds the time to the name of that journal, so that nothing is played back. Throws Error.
void moveJournalAside(const QString& path);
