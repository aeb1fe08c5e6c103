#pragma once

#include <QString>

/// The codes of chapters and bills. A chapter's code has two digits a level; a bill's is that of its chapter, which
/// is on the deepest level, and three digits more.

/// Length of the code of a chapter on the deepest level: only such chapters have bills.
inline constexpr qsizetype deepestChapterLength = 6;
/// Length of a bill's code.
inline constexpr int billCodeLength = 9;

/// Whether the chapter with the code `chapter` is on the deepest level.
inline bool holdsBills(const QString& chapter) { return chapter.size() == deepestChapterLength; }

/// A bill, by the row id of tblBill, and its code.
struct Bill {
    qint64 id = 0;
    QString code;
};

/// The neighbouring code of `code`: its first `codeLength` characters (2, 4, 6 or 9) are one number that is stepped by
/// one, written back with at least `codeLength` digits, and followed by the rest of the code. Stepping below 0 gives 0;
/// stepping carries into the parent's digits and may make the code longer. Any other length gives an empty text; a
/// number beyond 32 bits is a recorded error (empty text).
[[nodiscard]] QString GetCodePreNext(const QString& code, bool forward, int codeLength);
