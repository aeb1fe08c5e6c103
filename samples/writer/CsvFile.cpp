#include "samples/writer/CsvFile.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Takes the text apart; the last row may end without a line break.
std::vector<CsvRow> rowsOf(const QString& file, const QString& text, Complaints& complaints) {
    std::vector<CsvRow> rows;
    int line = 1;
    bool quoted = false;
    QString field;
    CsvRow row{file, line, {}};
    const auto endField = [&] {
        row.fields << field.trimmed();
        field.clear();
    };
    const auto endRow = [&] {
        endField();
        if (std::any_of(row.fields.cbegin(), row.fields.cend(), [](const QString& each) { return !each.isEmpty(); }))
            rows.push_back(row);
        row = {file, line, {}};
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        line += c == u'\n' ? 1 : 0;
        if (c == u'"' && quoted && at + 1 < text.size() && text[at + 1] == u'"')
            field += text[++at];
        else if (c == u'"')
            quoted = !quoted;
        else if (!quoted && c == u',')
            endField();
        else if (!quoted && c == u'\n')
            endRow();
        else if (c != u'\r')
            field += c;
    }
    if (quoted)
        complaints.add(row, u"a quote is not closed"_s);
    else
        endRow();
    return rows;
}

void check(const CsvRow& row, const CsvColumn& column, const QString& field, Complaints& complaints) {
    const QString name = QString::fromUtf8(column.name);
    if (field.isEmpty() && !column.optional)
        complaints.add(row, u"%1 is missing"_s.arg(name));
    if (field.size() > column.width)
        complaints.add(row, u"%1 is longer than %2 characters: %3"_s.arg(name).arg(column.width).arg(field));
    if (field.contains(u'\'') || field.contains(QChar::Null))
        complaints.add(row, u"%1 holds an apostrophe or a NUL: %2"_s.arg(name, field));
}

}  // namespace

void Complaints::add(const CsvRow& row, const QString& message) {
    m_all << u"%1:%2: %3"_s.arg(row.file).arg(row.line).arg(message);
}

std::vector<CsvRow> readCsv(const QString& folder, const QString& name, std::initializer_list<CsvColumn> columns,
                            Complaints& complaints) {
    const CsvRow whole{name, 1, {}};
    QFile file(QDir(folder).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        complaints.add(whole, u"cannot be read: %1"_s.arg(file.errorString()));
        return {};
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(file.readAll());
    if (decoder.hasError()) {
        complaints.add(whole, u"is not valid UTF-8"_s);
        return {};
    }
    QStringList names;
    for (const CsvColumn& column : columns)
        names << QString::fromUtf8(column.name);
    std::vector<CsvRow> rows = rowsOf(name, text, complaints);
    if (rows.empty() || rows.front().fields != names) {
        complaints.add(whole, u"the columns are not %1"_s.arg(names.join(u',')));
        return {};
    }
    rows.erase(rows.begin());
    std::erase_if(rows, [&](const CsvRow& row) {
        if (row.fields.size() == names.size())
            return false;
        complaints.add(row, u"%1 fields instead of %2"_s.arg(row.fields.size()).arg(names.size()));
        return true;
    });
    for (const CsvRow& row : rows) {
        const QString* field = row.fields.constData();
        for (const CsvColumn& column : columns)
            check(row, column, *field++, complaints);
    }
    return rows;
}
