#pragma once

#include "tests/support/OtherProgram.h"

/// Whether `text` breaks the statement that it is put into as it is: it is refused then.
inline bool isBroken(const QString& text) { return text.contains(u'\''); }

/// Without the blanks around it.
inline QString trimmed(QString text) { return text.remove(QRegularExpression(u"^ +| +\\z"_s)); }

/// The code before or after `code`, of which the first `length` characters are a number.
inline QString neighbourCode(const QString& code, int length, bool forward) {
    const qlonglong number = code.left(length).toLongLong() + (forward ? 1 : -1);
    return QString::number(qMax(number, 0LL)).rightJustified(length, u'0') + code.mid(length);
}

/// The rows of a bill library in a database of its own, which knows nothing of the program. What commands do to a
/// library is told in plain statements; with a row that is deleted goes what belongs to it, and nothing else. Only the
/// times of changes and the version numbers are left out.
class LibraryModel : public OtherProgram {
public:
    LibraryModel() : OtherProgram(u":memory:"_s) {}

    /// Takes the rows as the file has them.
    void load(const QString& path) {
        run("ATTACH ? AS file", {path});
        for (const char* name :
             {"tblSYB", "tblBill", "tblParm", "tblCont", "tblContDe", "tblBillSpec", "tblSpecEnum"}) {
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

    /// Fails the test when the file holds anything else. A row that was added gets the id that the file chose for it.
    void expectFile(const QString& path) {
        run("ATTACH ? AS file", {path});
        for (const auto& [table, columns] : m_columns) {
            rows(
                u"UPDATE main.%1 SET ID=(SELECT max(ID) FROM file.%1 WHERE ID NOT IN "
                "(SELECT ID FROM main.%1 WHERE ID IS NOT NULL)) WHERE ID IS NULL"_s.arg(table));
            const QString cells = asShown(columns);
            for (const QStringList& row :
                 rows(u"SELECT 'is missing:',* FROM (SELECT %2 FROM main.%1 EXCEPT SELECT %2 FROM file.%1) UNION ALL "
                      "SELECT 'is unexpected:',* FROM (SELECT %2 FROM file.%1 EXCEPT SELECT %2 FROM main.%1)"_s.arg(
                          table, cells)))
                ADD_FAILURE() << qPrintable(table) << ' ' << qPrintable(row.join(u'|'));
        }
        run("DETACH file");
    }

    /// `name`, or the first of "name(1)", "name(2)" … for which `taken` gives no row.
    QString copyName(const char* taken, const QString& name) {
        QString copy = name;
        for (int number = 1; !rows(QLatin1String(taken), {copy}).isEmpty(); ++number)
            copy = u"%1(%2)"_s.arg(name).arg(number);
        return copy;
    }

private:
    /// A missing text is as good as an empty one, and a number as good as its digits.
    static QString asShown(QString columns) {
        return columns.replace(u"["_s, u"ifnull(["_s).replace(u"]"_s, u"],'')||''"_s);
    }

    std::map<QString, QString> m_columns;
};
