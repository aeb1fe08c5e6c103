#pragma once

#include <QString>
#include <QStringList>
#include <ostream>

/// Lets failing expectations show the toolkit's texts as texts.

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toUtf8().constData() << '"'; }

inline void PrintTo(const QStringList& texts, std::ostream* out) {
    for (const QString& text : texts)
        *out << "\n    \"" << text.toUtf8().constData() << '"';
}
