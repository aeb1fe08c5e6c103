#include "tests/walk/CodeModel.h"

#include <gtest/gtest.h>

#include "tests/support/OtherProgram.h"

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

CodeModel::CodeModel(QString path) : m_path(std::move(path)) { load(); }

void CodeModel::load() {
    m_rows = inFile();
    m_added.clear();
}

CodeModel::Library CodeModel::inFile() const {
    Library all;
    for (const QString& line : rowsInFile(m_path,
                                          "SELECT 's', ID, IFNULL(Code,''), '' FROM tblSYB UNION ALL "
                                          "SELECT 'b', ID, IFNULL(Code,''), '' FROM tblBill UNION ALL "
                                          "SELECT 'c', ID, IFNULL(Code,''), BillID FROM tblCont UNION ALL "
                                          "SELECT 'p', ID, IFNULL(Code,''), BillID FROM tblParm")) {
        const QStringList cells = line.split(u'|');
        all.insert(cells[0] + cells[1], {cells[0][0].toLatin1(), cells[2], cells[3]});
    }
    return all;
}

void CodeModel::deleteChapter(const QString& code) {
    const QString prefix = code.left(6);
    QStringList bills;
    for (auto row = m_rows.begin(); row != m_rows.end();) {
        const bool chapter = row->kind == 's' && row->code == code;
        if (row->kind == 'b' && row->code.size() == prefix.size() + 3 && row->code.startsWith(prefix))
            bills << row.key().mid(1);
        row = chapter ? m_rows.erase(row) : std::next(row);
    }
    for (const QString& id : bills)
        deleteBill(id);
}

void CodeModel::deleteBill(const QString& id) {
    m_rows.removeIf(
        [&](const std::pair<const QString&, Row&>& row) { return row.second.bill == id || row.first == u'b' + id; });
}

void CodeModel::recodeBill(const QString& id, const QString& code, bool parametersToo) {
    for (auto row = m_rows.begin(); row != m_rows.end(); ++row) {
        const bool ofBill = row->bill == id && (row->kind == 'c' || parametersToo);
        if (ofBill || row.key() == u'b' + id)
            row->code = code;
    }
}

void CodeModel::swapChapters(const QString& a, const QString& b) {
    const QString scratch(b.size(), u'0');
    for (Row& row : m_rows) {
        const QString rest = row.code.mid(b.size());
        if (row.kind == 'p')
            continue;
        // Codes that begin with the stand-in of the swap are swept along with those of b.
        if (row.code.startsWith(b) || row.code.startsWith(scratch))
            row.code = a + rest;
        else if (row.code.startsWith(a))
            row.code = b + rest;
    }
}

void CodeModel::expectContained(const Library& rows, const Library& in, const char* otherwise) {
    for (auto row = rows.begin(); row != rows.end(); ++row)
        EXPECT_TRUE(in.contains(row.key()) && in.value(row.key()) == row.value())
            << otherwise << qPrintable(row.key()) << ' ' << qPrintable(row->code) << " of bill "
            << qPrintable(row->bill);
}

void CodeModel::check() {
    const Library file = inFile();
    for (const Row& added : m_added) {
        auto found = file.begin();
        while (found != file.end() && (m_rows.contains(found.key()) || !(*found == added)))
            ++found;
        if (found != file.end())
            m_rows.insert(found.key(), added);
        else
            ADD_FAILURE() << "the file has no new " << added.kind << ' ' << qPrintable(added.code);
    }
    m_added.clear();
    expectContained(m_rows, file, "the file lacks ");
    expectContained(file, m_rows, "the file has, unexpectedly, ");
}
