#include "samples/builder/SourceFile.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>

void Complaints::add(const SourceLine& line, const QString& message) {
    m_all << QStringLiteral("%1:%2: %3").arg(line.file).arg(line.number).arg(message);
}

void Complaints::checkText(const SourceLine& line, const QString& text, int limit) {
    if (text.size() > limit)
        add(line, QStringLiteral("longer than %1 characters: %2").arg(limit).arg(text));
    if (text.contains(QLatin1Char('\'')) || text.contains(QChar::Null))
        add(line, QStringLiteral("holds an apostrophe or a NUL: %1").arg(text));
}

std::vector<SourceLine> readSource(const QString& folder, const QString& name, Complaints& complaints) {
    QFile file(QDir(folder).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        complaints.add(name, QStringLiteral("cannot be read: %1").arg(file.errorString()));
        return {};
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(file.readAll());
    if (decoder.hasError()) {
        complaints.add(name, QStringLiteral("is not valid UTF-8"));
        return {};
    }
    std::vector<SourceLine> lines;
    int number = 0;
    for (const QString& raw : text.split(QLatin1Char('\n'))) {
        ++number;
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        SourceLine parsed{name, number, line.section(QLatin1Char(' '), 0, 0), {}};
        for (const QString& field : line.section(QLatin1Char(' '), 1).split(QLatin1Char('|')))
            parsed.fields << field.trimmed();
        lines.push_back(std::move(parsed));
    }
    return lines;
}
