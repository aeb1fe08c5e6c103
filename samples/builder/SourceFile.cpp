#include "samples/builder/SourceFile.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

void Complaints::add(const SourceLine& line, const QString& message) {
    m_all << u"%1:%2: %3"_s.arg(line.file).arg(line.number).arg(message);
}

void Complaints::checkText(const SourceLine& line, const QString& text, int limit) {
    if (text.size() > limit)
        add(line, u"longer than %1 characters: %2"_s.arg(limit).arg(text));
    if (text.contains(u'\'') || text.contains(QChar::Null))
        add(line, u"holds an apostrophe or a NUL: %1"_s.arg(text));
}

std::vector<SourceLine> readSource(const QString& folder, const QString& name, Complaints& complaints) {
    QFile file(QDir(folder).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        complaints.add(name, u"cannot be read: %1"_s.arg(file.errorString()));
        return {};
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(file.readAll());
    if (decoder.hasError()) {
        complaints.add(name, u"is not valid UTF-8"_s);
        return {};
    }
    std::vector<SourceLine> lines;
    int number = 0;
    for (const QString& raw : text.split(u'\n')) {
        ++number;
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        SourceLine parsed{name, number, line.section(u' ', 0, 0), {}};
        for (const QString& field : line.section(u' ', 1).split(u'|'))
            parsed.fields << field.trimmed();
        lines.push_back(std::move(parsed));
    }
    return lines;
}
