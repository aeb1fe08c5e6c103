#include "storage/Sql.h"

void SqlComposer::add(const SqlText& piece) {
    m_statement.m_text += piece.text();
    if (m_statement.m_brokenAt.isEmpty())
        m_statement.m_brokenAt = piece.brokenAt();
}

void SqlComposer::add(const QString& value) {
    for (qsizetype i = 0; i < value.size() && m_statement.m_brokenAt.isEmpty(); ++i) {
        if (value[i] == QLatin1Char('\'') || value[i].isNull())
            m_statement.m_brokenAt = value.mid(i, 40);
    }
    m_statement.m_text += value;
}

void SqlComposer::add(const Doubled& value) {
    QString doubled = value.text;
    doubled.replace(QLatin1String("'"), QLatin1String("''"));
    if (doubled.contains(QChar::Null))
        m_statement.m_brokenAt = QStringLiteral("NUL");
    m_statement.m_text += doubled;
}
