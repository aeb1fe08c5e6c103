#pragma once

#include <QList>
#include <QMap>
#include <QString>

/// The code before or after `code` among codes of `length` digits, by pencil and paper: digit by digit, with carry.
QString neighbourCode(const QString& code, int length, bool forward);

/// The codes of all chapters, bills, contents and parameters of a library, and what commands do to them, told without
/// a statement. Rows are meant by their ids.
class CodeModel {
public:
    explicit CodeModel(QString path);

    /// Takes the codes as the file has them.
    void load();

    /// A row that must have come: its id is the file's to choose.
    void addChapter(const QString& code) { m_added.append({'s', code, {}}); }
    void addBill(const QString& code) { m_added.append({'b', code, {}}); }
    void addContent(const QString& billId, const QString& code) { m_added.append({'c', code, billId}); }

    void deleteChapter(const QString& code);
    void deleteBill(const QString& id);
    void deleteContent(const QString& id) { m_rows.remove(u'c' + id); }

    /// Gives a bill and its contents another code; its parameters only when the bill is moved by the user.
    void recodeBill(const QString& id, const QString& code, bool parametersToo);
    /// Swaps the first characters of all codes below two chapters.
    void swapChapters(const QString& a, const QString& b);

    /// Fails the test when the file has other codes.
    void check();

private:
    struct Row {
        char kind = 0;  ///< s chapter, b bill, c content, p parameter
        QString code;
        QString bill;
        bool operator==(const Row&) const = default;
    };
    using Library = QMap<QString, Row>;  ///< by kind and id

    Library inFile() const;
    static void expectContained(const Library& rows, const Library& in, const char* otherwise);

    QString m_path;
    Library m_rows;
    QList<Row> m_added;
};
