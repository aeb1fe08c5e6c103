#include "administration/CsvFile.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// A decoder counts its errors where it was made: it must not be moved.
std::optional<QString> decoded(const QByteArray& bytes, QStringDecoder& decoder) {
    // Half a character at the end shows only when another one follows.
    const QString text = decoder(bytes + '\n');
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

std::optional<QString> textOf(const QByteArray& bytes) {
    const auto marked = QStringConverter::encodingForData(bytes);
    QStringDecoder unicode(marked.value_or(QStringConverter::Utf8));
    const std::optional<QString> text = decoded(bytes, unicode);
    if (text || marked)
        return text;
    // What older spreadsheets save in China, GBK, is a part of GB18030. A toolkit that does not know it is that of a
    // system which has it as its own encoding, where it is used at all.
    QStringDecoder chinese("GB18030");
    if (chinese.isValid())
        return decoded(bytes, chinese);
    QStringDecoder own(QStringConverter::System);
    return decoded(bytes, own);
}

/// Whichever the names of the columns, which hold none of them, are set apart by.
QChar separatorOf(const QString& text) {
    const QStringView names = QStringView(text).left(text.indexOf(u'\n'));
    const QChar all[] = {u',', u';', u'\t'};
    return *std::max_element(std::begin(all), std::end(all),
                             [&](QChar a, QChar b) { return names.count(a) < names.count(b); });
}

/// Takes the text apart; the last row may end without a line break.
std::vector<CsvRow> rowsOf(const QString& file, const QString& text, Complaints& complaints) {
    const QChar separator = separatorOf(text);
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
        else if (!quoted && c == separator)
            endField();
        else if (!quoted && c == u'\n')
            endRow();
        else if (c != u'\r')
            field += c;
    }
    if (quoted)
        complaints.add(row, u"引号没有成对"_s);
    else
        endRow();
    return rows;
}

void check(const CsvRow& row, const CsvColumn& column, const QString& field, Complaints& complaints) {
    const QString name = QString::fromUtf8(column.name);
    if (field.isEmpty() && !column.optional)
        complaints.add(row, u"“%1”是空的"_s.arg(name));
    if (field.size() > column.width)
        complaints.add(row, u"“%1”有 %2 个字，最多 %3 个：%4"_s.arg(name)
                                .arg(field.size())
                                .arg(column.width)
                                .arg(field.left(column.width)));
    if (field.contains(u'\'') || field.contains(QChar::Null))
        complaints.add(row, u"“%1”中不能有英文单引号（'）和空字符，请改用中文引号：%2"_s.arg(name, field));
}

/// Where the file has the columns; -1 for an optional one that it has not.
std::vector<qsizetype> placesOf(const std::initializer_list<CsvColumn>& columns, const CsvRow& names,
                                Complaints& complaints) {
    std::vector<qsizetype> places;
    QStringList others = names.fields;
    others.removeAll(QString());
    for (const CsvColumn& column : columns) {
        const QString name = QString::fromUtf8(column.name);
        const auto count = others.removeAll(name);
        if (count > 1)
            complaints.add(names, u"“%1”列有 %2 个"_s.arg(name).arg(count));
        else if (count == 0 && !column.optional)
            complaints.add(names, u"缺少“%1”列"_s.arg(name));
        places.push_back(names.fields.indexOf(name));
    }
    if (!others.isEmpty())
        complaints.note(names, u"没有使用的列：%1"_s.arg(others.join(u'、')));
    return places;
}

}  // namespace

void Complaints::add(const CsvRow& row, const QString& message) {
    m_all << u"%1:%2: %3"_s.arg(row.file).arg(row.line).arg(message);
}

void Complaints::note(const CsvRow& row, const QString& message) {
    m_notes << u"%1:%2: %3"_s.arg(row.file).arg(row.line).arg(message);
}

std::vector<CsvRow> readCsv(const QString& path, std::initializer_list<CsvColumn> columns, Complaints& complaints) {
    const CsvRow whole{path, 1, {}};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        complaints.add(whole, u"无法读取文件（%1）"_s.arg(file.errorString()));
        return {};
    }
    const std::optional<QString> text = textOf(file.readAll());
    if (!text) {
        complaints.add(whole, u"既不是 UTF-8 文本，也不是 GBK 文本"_s);
        return {};
    }
    const auto before = complaints.all().size();
    std::vector<CsvRow> rows = rowsOf(path, *text, complaints);
    const CsvRow names = rows.empty() ? whole : rows.front();
    const std::vector<qsizetype> places = placesOf(columns, names, complaints);
    if (complaints.all().size() > before)
        return {};
    rows.erase(rows.begin());
    std::erase_if(rows, [&](CsvRow& row) {
        while (row.fields.size() > names.fields.size() && row.fields.constLast().isEmpty())
            row.fields.removeLast();
        if (row.fields.size() == names.fields.size())
            return false;
        complaints.add(row, u"有 %1 个字段，应为 %2 个"_s.arg(row.fields.size()).arg(names.fields.size()));
        return true;
    });
    for (CsvRow& row : rows) {
        QStringList fields;
        for (const qsizetype place : places)
            fields << (place < 0 ? QString() : row.fields[place]);
        row.fields = fields;
        const QString* field = row.fields.constData();
        for (const CsvColumn& column : columns)
            check(row, column, *field++, complaints);
    }
    return rows;
}
