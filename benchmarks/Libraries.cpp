#include "benchmarks/Libraries.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/generator/LibraryGenerator.h"

using namespace Qt::StringLiterals;

namespace {

const QTemporaryDir& folder() {
    static const QTemporaryDir temporary(QDir::tempPath() + u"/tessel-benchmarks-XXXXXX"_s);
    return temporary;
}

QByteArray digest(PlainStatement rows) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    while (rows.step())
        hash.addData(rows.text(0).toUtf8() + '\n');
    return hash.result();
}

/// The columns of a table, without LastUpdate, as one expression.
QString rowExpression(PlainDatabase& file, const QString& table) {
    QStringList columns;
    PlainStatement names = file.prepare(u"SELECT name FROM pragma_table_info('%1')"_s.arg(table));
    while (names.step()) {
        if (names.text(0).compare(u"LastUpdate"_s, Qt::CaseInsensitive) != 0)
            columns << u"quote([%1])"_s.arg(names.text(0));
    }
    return columns.join(u"||'|'||"_s);
}

/// The first commit waits until everything that was written to the file is on the disk; the one that is measured does
/// not have to then.
void writeThrough(const QString& path) { PlainDatabase(path).run("PRAGMA user_version=1; PRAGMA user_version=0"); }

}  // namespace

void makeProgramFolder() {
    const QString program = folder().filePath(u"program"_s);
    generateProgramFolder(program, {});
    qputenv("TESSEL_HOME", program.toUtf8());
    appPath = withSeparator(programFolder());
    dataPath = withSeparator(joinPath(programFolder(), u"Data"_s));
}

QString generatedLibrary(int bills) {
    const QString path = folder().filePath(u"%1.bdb"_s.arg(bills));
    if (!QFile::exists(path))
        generateLibrary(path, shapeOf(bills));
    return path;
}

LibraryCopy::LibraryCopy(const QString& original) : m_original(original) {
    static int copies = 0;
    m_path = folder().filePath(u"copy-%1.bdb"_s.arg(++copies));
    if (!QFile::copy(original, m_path))
        throw Error(61, u"%1 cannot be copied to %2"_s.arg(original, m_path));
    writeThrough(m_path);
}

void LibraryCopy::restore() const {
    QFile original(m_original);
    QFile file(m_path);
    if (!original.open(QIODevice::ReadOnly) || !file.open(QIODevice::ReadWrite) || !file.resize(original.size()))
        throw Error(61, u"%1 cannot be restored"_s.arg(m_path));
    constexpr qint64 blockSize = 65536;
    for (qint64 at = 0; at < original.size(); at += blockSize) {
        const QByteArray wanted = original.read(blockSize);
        file.seek(at);
        if (file.read(blockSize) != wanted) {
            file.seek(at);
            file.write(wanted);
        }
    }
    file.close();
    writeThrough(m_path);
}

LibraryCopy::~LibraryCopy() { QFile::remove(m_path); }

QString difference(const QString& path, const QString& otherPath) {
    PlainDatabase file(path);
    PlainDatabase other(otherPath);
    const char* const schema = "SELECT type||name||ifnull(sql,'') FROM sqlite_master ORDER BY 1";
    if (digest(file.prepare(schema)) != digest(other.prepare(schema)))
        return u"schema"_s;
    PlainStatement tables = file.prepare("SELECT name FROM sqlite_master WHERE name LIKE 'tbl%'");
    while (tables.step()) {
        const QString table = tables.text(0);
        const QString rows = u"SELECT %1 FROM %2 ORDER BY rowid"_s.arg(rowExpression(file, table), table);
        if (digest(file.prepare(rows)) != digest(other.prepare(rows)))
            return table;
    }
    return {};
}
