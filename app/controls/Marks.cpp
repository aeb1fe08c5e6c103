#include "app/controls/Marks.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype mostShown = 2000;
}

QString Theme::inOneLine(const QString& text) {
    static const QRegularExpression breaks(u"\\r\\n|[\\t\\n\\v\\f\\r\\x{85}\\x{2028}\\x{2029}]"_s);
    return QString(text).replace(breaks, u" "_s);
}

QString Theme::oneLine(const QString& text) { return inOneLine(text.left(mostShown)); }

QString Theme::plainToolTip(const QString& text) {
    return u"<div style='white-space: pre-wrap'>%1</div>"_s.arg(text.left(mostShown).toHtmlEscaped());
}
