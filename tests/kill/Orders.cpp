#include "tests/kill/Orders.h"

#include <QUrlQuery>

Orders Orders::fromText(const QString& text) {
    const QUrlQuery query(text);
    const auto item = [&](const char* key) { return query.queryItemValue(QLatin1String(key), QUrl::FullyDecoded); };
    return {.library = item("library"),
            .journal = item("journal"),
            .seed = item("seed").toUInt(),
            .steps = item("steps").toInt(),
            .checked = item("checked") == QLatin1String("1"),
            .endAt = item("endAt").toLongLong()};
}

QString Orders::toText() const {
    QUrlQuery query;
    const auto add = [&](const char* key, const QString& value) {
        query.addQueryItem(QLatin1String(key), QString::fromLatin1(QUrl::toPercentEncoding(value)));
    };
    add("library", library);
    add("journal", journal);
    add("seed", QString::number(seed));
    add("steps", QString::number(steps));
    add("checked", QString::number(checked ? 1 : 0));
    add("endAt", QString::number(endAt));
    return query.toString(QUrl::FullyEncoded);
}
