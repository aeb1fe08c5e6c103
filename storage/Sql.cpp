#include "storage/Sql.h"

using namespace Qt::StringLiterals;

void SqlComposer::add(const SqlText& piece) {
    m_statement.m_text += piece.text();
    if (m_statement.m_brokenAt.isEmpty())
        m_statement.m_brokenAt = piece.brokenAt();
}

void SqlComposer::add(const QString& value) {
    for (qsizetype i = 0; i < value.size() && m_statement.m_brokenAt.isEmpty(); ++i) {
        if (value[i] == u'\'' || value[i].isNull())
            m_statement.m_brokenAt = value.mid(i, 40);
    }
    m_statement.m_text += value;
}

void SqlComposer::add(const Doubled& value) {
    QString doubled = value.text;
    doubled.replace(u"'"_s, u"''"_s);
    if (doubled.contains(QChar::Null))
        m_statement.m_brokenAt = u"NUL"_s;
    m_statement.m_text += doubled;
}
