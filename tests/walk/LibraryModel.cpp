#include "tests/walk/LibraryModel.h"

#include <QRegularExpression>

namespace {

/// A missing text is as good as an empty one, and a number as good as its digits.
QString asShown(QString columns) { return columns.replace(u"["_s, u"ifnull(["_s).replace(u"]"_s, u"],'')||''"_s); }

}  // namespace

QString trimmed(QString text) { return text.remove(QRegularExpression(u"^ +| +\\z"_s)); }

QString neighbourCode(const QString& code, int length, bool forward) {
    const qlonglong number = code.left(length).toLongLong() + (forward ? 1 : -1);
    return QString::number(qMax(number, 0LL)).rightJustified(length, u'0') + code.mid(length);
}

void LibraryModel::load(const QString& path) {
    run("ATTACH ? AS file", {path});
    for (const char* name : {"tblSYB", "tblBill", "tblParm", "tblCont", "tblContDe", "tblBillSpec", "tblSpecEnum"}) {
        const QString table = QLatin1String(name);
        QString& columns = m_columns[table];
        columns = run("SELECT '['||name||']' FROM pragma_table_info(?,'file') WHERE lower(name) NOT IN "
                      "('lastupdate','version')",
                      {table})
                      .join(u',');
        rows(u"DROP TABLE IF EXISTS main.%1"_s.arg(table));
        rows(u"CREATE TABLE main.%1 AS SELECT %2 FROM file.%1"_s.arg(table, columns));
    }
    run("DETACH file");
    forgetStates();
    constexpr const char* ownership[][3] = {
        {"tblSYB", "tblBill", "substr(Code,1,length(Code)-3)=substr(old.Code,1,6)"},
        {"tblBill", "tblParm", "BillID=old.ID"},
        {"tblBill", "tblCont", "BillID=old.ID"},
        {"tblBill", "tblBillSpec", "BillID=old.ID"},
        {"tblCont", "tblContDe", "ContID=old.ID"},
        {"tblBillSpec", "tblSpecEnum", "SpecID=old.ID"},
    };
    for (const auto& [owner, owned, which] : ownership)
        rows(u"CREATE TRIGGER %2OfIt AFTER DELETE ON %1 BEGIN DELETE FROM %2 WHERE %3; END"_s.arg(
            QLatin1String(owner), QLatin1String(owned), QLatin1String(which)));
}

void LibraryModel::expectFile(const QString& path) {
    run("ATTACH ? AS file", {path});
    for (const auto& [table, columns] : m_columns) {
        rows(
            u"UPDATE main.%1 SET ID=(SELECT max(ID) FROM file.%1 WHERE ID NOT IN "
            "(SELECT ID FROM main.%1 WHERE ID IS NOT NULL)) WHERE ID IS NULL"_s.arg(table));
        const QString cells = asShown(columns);
        for (const QStringList& row :
             rows(u"SELECT 'is missing:',* FROM (SELECT %2 FROM main.%1 EXCEPT SELECT %2 FROM file.%1) UNION ALL "
                  "SELECT 'is unexpected:',* FROM (SELECT %2 FROM file.%1 EXCEPT SELECT %2 FROM main.%1)"_s.arg(table,
                                                                                                                cells)))
            ADD_FAILURE() << qPrintable(table) << ' ' << qPrintable(row.join(u'|'));
    }
    // Rows that were added have their ids now.
    keep(m_state);
    run("DETACH file");
}

bool LibraryModel::isState(int state) {
    for (const auto& [table, columns] : m_columns)
        if (!rows(u"SELECT 1 FROM (SELECT %3 FROM %1 EXCEPT SELECT %3 FROM [%1.%2]) UNION ALL "
                  "SELECT 1 FROM (SELECT %3 FROM [%1.%2] EXCEPT SELECT %3 FROM %1)"_s.arg(table)
                      .arg(state)
                      .arg(asShown(columns)))
                 .isEmpty())
            return false;
    return true;
}

void LibraryModel::keep(int state) {
    for (const auto& [table, columns] : m_columns) {
        rows(u"DROP TABLE IF EXISTS [%1.%2]"_s.arg(table).arg(state));
        rows(u"CREATE TABLE [%1.%2] AS SELECT * FROM %1"_s.arg(table).arg(state));
    }
}

void LibraryModel::remember() {
    if (isState(m_state))
        return;
    m_states = ++m_state;
    keep(m_state);
}

bool LibraryModel::go(int by) {
    if (m_state + by < 0 || m_state + by > m_states)
        return false;
    m_state += by;
    for (const auto& [table, columns] : m_columns)
        rows(u"DELETE FROM %1"_s.arg(table));
    for (const auto& [table, columns] : m_columns)
        rows(u"INSERT INTO %1 SELECT * FROM [%1.%2]"_s.arg(table).arg(m_state));
    return true;
}

void LibraryModel::forgetStates() {
    m_state = m_states = 0;
    keep(0);
}

QString LibraryModel::text(const char* query, const QStringList& values) {
    return rows(QLatin1String(query), values).value(0).value(0);
}

QString LibraryModel::copyName(const char* taken, const QString& name) {
    QString copy = name;
    for (int number = 1; !rows(QLatin1String(taken), {copy}).isEmpty(); ++number)
        copy = u"%1(%2)"_s.arg(name).arg(number);
    return copy;
}
