#include "app/base/Text.h"

#include <QDateTime>
#include <limits>

using namespace Qt::StringLiterals;

QString trimBlanks(const QString& text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

QString wholeCharacters(const QString& text) {
    if (text.isValidUtf16())
        return text;
    QString whole;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair)
            whole += text[i++];
        if (pair || !text[i].isSurrogate())
            whole += text[i];
    }
    return whole;
}

qint64 numericValue(const QString& text) {
    constexpr qint64 largest = std::numeric_limits<qint64>::max();
    qint64 number = 0;
    bool negative = false;
    bool begun = false;
    for (const QChar c : text) {
        const ushort u = c.unicode();
        if (u == ' ')
            continue;
        if (!begun && (u == '-' || u == '+')) {
            negative = u == '-';
        } else if (u >= '0' && u <= '9') {
            const int digit = u - '0';
            number = number > (largest - digit) / 10 ? largest : number * 10 + digit;
        } else {
            break;
        }
        begun = true;
    }
    return negative ? -number : number;
}

QString zeroPadded(qint64 number, int digits) { return QString::number(number).rightJustified(digits, u'0'); }

QString nowText() { return QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s); }
