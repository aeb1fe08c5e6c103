#include "app/controls/TableText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

bool needsQuotes(const QString& cell) {
    static const QRegularExpression special(u"[\\t\\r\\n\"]"_s);
    return cell.contains(special);
}

/// One cell after the other.
class Reader {
public:
    explicit Reader(const QString& text) : m_text(text) {}

    bool atEnd() const { return m_at >= m_text.size(); }

    QString cell() {
        const qsizetype begin = m_at;
        if (QString quoted; takeQuoted(quoted))
            return quoted;
        m_at = begin;
        while (!isCellEnd())
            ++m_at;
        return m_text.mid(begin, m_at - begin);
    }

    /// Goes on to the next cell; false when that is in another line, or there is none.
    bool sameLine() {
        const bool tab = !atEnd() && m_text[m_at] == u'\t';
        m_at += !tab && QStringView(m_text).mid(m_at).startsWith(u"\r\n"_s) ? 2 : 1;
        return tab;
    }

private:
    bool isCellEnd() const { return atEnd() || QStringView(u"\t\r\n").contains(m_text[m_at]); }

    bool takeQuoted(QString& quoted) {
        if (atEnd() || m_text[m_at] != u'"')
            return false;
        for (++m_at; !atEnd(); ++m_at) {
            const bool isMark = m_text[m_at] == u'"';
            if (isMark && ++m_at < m_text.size() && m_text[m_at] == u'"') {
                quoted += u'"';
                continue;
            }
            if (isMark)
                return isCellEnd() && needsQuotes(quoted);
            quoted += m_text[m_at];
        }
        return false;
    }

    const QString& m_text;
    qsizetype m_at = 0;
};

}  // namespace

QString TableText::tabbed(const Table& rows) {
    QString text;
    for (const QStringList& row : rows) {
        QStringList cells = row;
        for (QString& cell : cells)
            if (needsQuotes(cell))
                cell = u'"' + cell.replace(u'"', u"\"\""_s) + u'"';
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

QString TableText::html(const Table& rows) {
    // Each spreadsheet has a way of its own to be told that a cell is a text.
    const QString cellBegin = u"<td style='mso-number-format:\"\\@\"' sdnum=\"0;0;@\">"_s;
    QString table;
    for (const QStringList& row : rows) {
        table += u"<tr>"_s;
        for (const QString& cell : row) {
            QString text = cell.toHtmlEscaped();
            text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
            table += cellBegin + text.replace(u'\n', u"<br style=\"mso-data-placement:same-cell\">"_s) + u"</td>"_s;
        }
        table += u"</tr>\n"_s;
    }
    return u"<html><head><meta charset=\"utf-8\"></head><body><table>\n%1</table></body></html>"_s.arg(table);
}

TableText::Table TableText::parse(const QString& tabbed) {
    Table rows;
    for (Reader reader(tabbed); !reader.atEnd();) {
        QStringList row;
        do
            row << reader.cell();
        while (reader.sameLine());
        rows << row;
    }
    return rows;
}
