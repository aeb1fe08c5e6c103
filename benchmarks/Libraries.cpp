#include "benchmarks/Libraries.h"

#include <QDir>
#include <QFile>
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

/// The first commit waits until everything that was written to the file is on the disk; the one that is measured does
/// not have to then.
void writeThrough(const QString& path) { PlainDatabase(path).run("PRAGMA user_version=1; PRAGMA user_version=0"); }

}  // namespace

void makeProgramFolder() {
    const QString program = folder().filePath(u"program"_s);
    generateProgramFolder(program, 20000);
    qputenv("TESSEL_HOME", program.toUtf8());
    appPath = withSeparator(programFolder());
    dataPath = withSeparator(joinPath(programFolder(), u"Data"_s));
}

QString generatedLibrary(int bills) {
    const QString path = folder().filePath(u"%1.bdb"_s.arg(bills));
    if (!QFile::exists(path))
        generateLibrary(path, bills);
    return path;
}

QString bareLibrary(int bills) {
    const QString path = folder().filePath(u"%1-bare.bdb"_s.arg(bills));
    if (!QFile::exists(path) && QFile::copy(generatedLibrary(bills), path))
        PlainDatabase(path).run(
            "DELETE FROM tblCont; DELETE FROM tblContDe; DELETE FROM tblBillSpec; DELETE FROM tblSpecEnum; "
            "DELETE FROM tblParm; VACUUM");
    return path;
}

const char* const fittingIndexes =
    "CREATE INDEX i1 ON tblBill(Code); CREATE INDEX i2 ON tblBill(Code COLLATE NOCASE); CREATE INDEX i3 ON "
    "tblCont(BillID); CREATE INDEX i4 ON tblCont(Code); CREATE INDEX i5 ON tblContDe(ContID); CREATE INDEX i6 ON "
    "tblBillSpec(BillID); CREATE INDEX i7 ON tblSpecEnum(SpecID); CREATE INDEX i8 ON tblParm(BillID); CREATE INDEX i9 "
    "ON tblBillSpec(Name); CREATE INDEX i10 ON tblCont(Cont); CREATE INDEX i11 ON tblContDe(SubCont);";

QString indexedLibrary(const QString& library) {
    const QString path = library + u".indexed"_s;
    if (!QFile::exists(path) && QFile::copy(library, path))
        PlainDatabase(path).run(fittingIndexes);
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
    file.run(u"ATTACH '%1' AS other"_s.arg(otherPath));
    const auto differ = [&](const QString& table, const QString& columns) {
        const QString missing =
            u"SELECT * FROM (SELECT %2 FROM %3.%1 EXCEPT SELECT %2 FROM %4.%1)"_s.arg(table, columns);
        return file.prepare(missing.arg(u"main"_s, u"other"_s) + u" UNION ALL "_s + missing.arg(u"other"_s, u"main"_s))
            .step();
    };
    if (differ(u"sqlite_master"_s, u"type,name,sql"_s))
        return u"schema"_s;
    PlainStatement tables = file.prepare(
        "SELECT t.name,group_concat('['||c.name||']') FROM sqlite_master t,pragma_table_info(t.name) c "
        "WHERE t.name LIKE 'tbl%' AND lower(c.name)<>'lastupdate' GROUP BY 1");
    while (tables.step()) {
        if (differ(tables.text(0), tables.text(1)))
            return tables.text(0);
    }
    return {};
}
