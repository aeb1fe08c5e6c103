#include "editor/common/Codes.h"

#include <algorithm>
#include <limits>

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "app/base/Text.h"

using namespace Qt::StringLiterals;

QString GetCodePreNext(const QString& code, bool forward, int codeLength) {
    return guarded({"frmEditor", "GetCodePreNext"}, [&] {
        if (codeLength != 2 && codeLength != 4 && codeLength != 6 && codeLength != 9)
            return QString();
        const qint64 prefix = numericValue(code.left(codeLength));
        const qint64 stepped = std::max<qint64>(forward ? prefix + 1 : prefix - 1, 0);
        if (prefix > std::numeric_limits<qint32>::max() || stepped > std::numeric_limits<qint32>::max())
            throw Error(6, u"编号溢出: "_s + code);
        return zeroPadded(stepped, codeLength) + code.mid(codeLength);
    });
}
