#pragma once

#include <QString>

/// The neighbouring code of `code`: its first `codeLength` characters (2, 4, 6 or 9) are one number that is stepped by
/// one, written back with at least `codeLength` digits, and followed by the rest of the code. Stepping below 0 gives 0;
/// stepping carries into the parent's digits and may make the code longer. Any other length gives an empty text; a
/// number beyond 32 bits is a recorded error (empty text).
QString GetCodePreNext(const QString& code, bool forward, int codeLength);
