#include "tests/walk/LibraryModel.h"

#include <gtest/gtest.h>

#include "tests/support/OtherProgram.h"

QString trimmed(QString text) {
    while (text.startsWith(u' '))
        text.remove(0, 1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QString neighbourCode(const QString& code, int length, bool forward) {
    QString digits = code.left(length).rightJustified(length, u'0');
    const QChar last = QLatin1Char(forward ? '9' : '0');
    const QChar first = QLatin1Char(forward ? '0' : '9');
    int at = static_cast<int>(digits.size()) - 1;
    while (at >= 0 && digits[at] == last)
        digits[at--] = first;
    if (at >= 0)
        digits[at] = QChar(digits[at].unicode() + (forward ? 1 : -1));
    else if (forward)
        digits.prepend(u'1');
    else
        digits.fill(u'0');
    return digits + code.mid(length);
}

LibraryModel::Tables LibraryModel::tablesOf(const QString& path) {
    OtherProgram file(path);
    Tables all;
    for (const char* name : {"tblSYB", "tblBill", "tblParm", "tblCont", "tblContDe", "tblBillSpec", "tblSpecEnum"}) {
        Table& table = all[name];
        const QString from = QLatin1String(name);
        for (const QStringList& column : file.rows(u"SELECT lower(name) FROM pragma_table_info('%1')"_s.arg(from)))
            if (column[0] != u"lastupdate" && column[0] != u"version")
                table.columns << column[0];
        for (QStringList& row : file.rows(u"SELECT [%1] FROM %2"_s.arg(table.columns.join(u"],["), from)))
            table.rows.insert(row.takeFirst().toLongLong(), row);
        table.columns.removeFirst();
    }
    return all;
}

void LibraryModel::load(const QString& path) {
    m_tables = tablesOf(path);
    m_added.clear();
}

LibraryModel::Ids LibraryModel::ids(const char* name, const char* column, const QString& value) const {
    const Table& in = table(name);
    const qsizetype at = in.columns.indexOf(QLatin1String(column).toString().toLower());
    Ids found;
    for (auto row = in.rows.begin(); row != in.rows.end(); ++row)
        if ((*row)[at] == value)
            found << QString::number(row.key());
    return found;
}

QString LibraryModel::cell(const char* name, const QString& id, const char* column) const {
    return table(name).rows[id.toLongLong()].value(
        table(name).columns.indexOf(QLatin1String(column).toString().toLower()));
}

void LibraryModel::set(const char* name, const QString& id, const char* column, const QString& value) {
    Table& in = m_tables[name];
    const auto row = in.rows.find(id.toLongLong());
    if (row != in.rows.end())
        (*row)[in.columns.indexOf(QLatin1String(column).toString().toLower())] = value;
}

void LibraryModel::add(const char* name, const QMap<QString, QString>& cells) {
    QStringList row(table(name).columns.size());
    for (auto cell = cells.begin(); cell != cells.end(); ++cell)
        row[table(name).columns.indexOf(cell.key().toLower())] = *cell;
    m_added.emplace(name, row);
}

void LibraryModel::remove(const char* name, const QString& id) { m_tables[name].rows.remove(id.toLongLong()); }

QStringList LibraryModel::chapterCodes() const {
    QStringList codes;
    for (const QStringList& row : table("tblSYB").rows)
        codes << row.constFirst();
    return codes;
}

QString LibraryModel::copyName(const char* name, const char* column, const QString& text) const {
    QString copy = text;
    for (int number = 1; !ids(name, column, copy).isEmpty(); ++number)
        copy = u"%1(%2)"_s.arg(text).arg(number);
    return copy;
}

void LibraryModel::deleteChapter(const QString& code) {
    for (const QString& id : ids("tblSYB", "Code", code))
        remove("tblSYB", id);
    const QString prefix = code.left(6);
    const Table bills = table("tblBill");
    for (auto bill = bills.rows.begin(); bill != bills.rows.end(); ++bill)
        if (bill->constFirst().size() == prefix.size() + 3 && bill->constFirst().startsWith(prefix))
            deleteBill(QString::number(bill.key()));
}

void LibraryModel::deleteBill(const QString& id) {
    for (const QString& parameter : ids("tblParm", "BillID", id))
        remove("tblParm", parameter);
    for (const QString& content : ids("tblCont", "BillID", id))
        deleteContent(content);
    for (const QString& feature : ids("tblBillSpec", "BillID", id))
        deleteFeature(feature);
    remove("tblBill", id);
}

void LibraryModel::deleteContent(const QString& id) {
    for (const QString& row : ids("tblContDe", "ContID", id))
        remove("tblContDe", row);
    remove("tblCont", id);
}

void LibraryModel::deleteFeature(const QString& id) {
    for (const QString& value : ids("tblSpecEnum", "SpecID", id))
        remove("tblSpecEnum", value);
    remove("tblBillSpec", id);
}

void LibraryModel::recodeBill(const QString& id, const QString& code, bool parametersToo) {
    set("tblBill", id, "Code", code);
    for (const QString& content : ids("tblCont", "BillID", id))
        set("tblCont", content, "Code", code);
    for (const QString& parameter : ids("tblParm", "BillID", parametersToo ? id : u"none"_s))
        set("tblParm", parameter, "Code", code);
}

void LibraryModel::swapChapters(const QString& a, const QString& b) {
    const QString scratch(b.size(), u'0');
    for (const char* name : {"tblSYB", "tblBill", "tblCont"}) {
        const qsizetype at = table(name).columns.indexOf(u"code");
        for (QStringList& row : m_tables[name].rows) {
            const QString code = row[at];
            // Codes that begin with the stand-in of the swap are swept along with those of b.
            if (code.startsWith(b) || code.startsWith(scratch))
                row[at] = a + code.mid(b.size());
            else if (code.startsWith(a))
                row[at] = b + code.mid(b.size());
        }
    }
}

void LibraryModel::renumber(const char* name, const char* ownerColumn, const QString& owner, const char* column,
                            int from, int by) {
    for (const QString& id : ids(name, ownerColumn, owner))
        if (const QString number = cell(name, id, column); !number.isEmpty() && number.toInt() >= from)
            set(name, id, column, QString::number(number.toInt() + by));
}

void LibraryModel::expectFile(const QString& path) {
    Tables file = tablesOf(path);
    for (const auto& [name, added] : m_added) {
        const auto& rows = file[name].rows;
        auto found = rows.begin();
        while (found != rows.end() && (m_tables[name].rows.contains(found.key()) || *found != added))
            ++found;
        if (found != rows.end())
            m_tables[name].rows.insert(found.key(), added);
        else
            ADD_FAILURE() << name << " has no new row " << qPrintable(added.join(u'|'));
    }
    m_added.clear();
    for (const auto& [name, expected] : m_tables) {
        const auto& rows = file[name].rows;
        if (rows == expected.rows)
            continue;
        for (auto row = expected.rows.begin(); row != expected.rows.end(); ++row)
            if (rows.value(row.key()) != *row)
                ADD_FAILURE() << name << ' ' << row.key() << " is " << qPrintable(rows.value(row.key()).join(u'|'))
                              << " instead of " << qPrintable(row->join(u'|'));
        for (auto row = rows.begin(); row != rows.end(); ++row)
            if (!expected.rows.contains(row.key()))
                ADD_FAILURE() << name << " has, unexpectedly, " << row.key() << ' ' << qPrintable(row->join(u'|'));
    }
}
