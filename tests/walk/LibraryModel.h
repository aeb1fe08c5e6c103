#pragma once

#include <QMap>
#include <QStringList>
#include <map>

/// Whether `text` breaks the statement that it is put into as it is: it is refused then.
inline bool isBroken(const QString& text) { return text.contains(u'\''); }

QString trimmed(QString text);

/// The code before or after `code` among codes of `length` digits, by pencil and paper: digit by digit, with carry.
QString neighbourCode(const QString& code, int length, bool forward);

/// Every row of a bill library, and what commands do to them, told without a statement. Only the times of changes and
/// the version numbers are left out. What a row belongs to goes with it, and nothing else.
class LibraryModel {
public:
    /// Takes the rows as the file has them.
    void load(const QString& path);
    /// Fails the test when the file holds anything else.
    void expectFile(const QString& path);

    using Ids = QList<QString>;
    /// Ids of the rows with this value, in ascending order.
    Ids ids(const char* table, const char* column, const QString& value) const;
    QString cell(const char* table, const QString& id, const char* column) const;
    void set(const char* table, const QString& id, const char* column, const QString& value);
    /// A row that must come: its id is the file's to choose. Missing columns are empty.
    void add(const char* table, const QMap<QString, QString>& cells);
    void remove(const char* table, const QString& id);

    bool hasChapter(const QString& code) const { return !ids("tblSYB", "Code", code).isEmpty(); }
    QStringList chapterCodes() const;
    /// `name`, or the first of "name(1)", "name(2)" … that no row has in that column.
    QString copyName(const char* table, const char* column, const QString& name) const;

    void deleteChapter(const QString& code);
    void deleteBill(const QString& id);
    void deleteContent(const QString& id);
    void deleteFeature(const QString& id);
    /// Gives a bill and its contents another code; its parameters only when the bill is moved by the user.
    void recodeBill(const QString& id, const QString& code, bool parametersToo);
    /// Swaps the first characters of all codes below two chapters.
    void swapChapters(const QString& a, const QString& b);
    /// Adds `by` to the number in `column` of those rows of `owner` whose number is at least `from`.
    void renumber(const char* table, const char* ownerColumn, const QString& owner, const char* column, int from,
                  int by);

private:
    struct Table {
        QStringList columns;
        QMap<qint64, QStringList> rows;
    };
    using Tables = std::map<std::string, Table>;
    static Tables tablesOf(const QString& path);
    const Table& table(const char* name) const { return m_tables.at(name); }

    Tables m_tables;
    std::multimap<std::string, QStringList> m_added;
};
