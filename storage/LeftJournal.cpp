#include "storage/LeftJournal.h"

#include <sqlite3.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QtEndian>
#include <memory>
#include <optional>

#include "app/base/Error.h"

using namespace Qt::StringLiterals;

namespace {

/// Where the count of changes stands in the first page.
constexpr qint64 countOffset = 24;

struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using Database = std::unique_ptr<sqlite3, Closer>;

/// Nothing is read of the file yet, so nothing is played back.
Database opened(const QString& path) {
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READONLY, nullptr);
    Database result(database);
    return code == SQLITE_OK ? std::move(result) : Database();
}

/// Where SQLite looks for the journal: beside what a link leads to.
QString journalOf(sqlite3* database) {
    return QString::fromUtf8(sqlite3_filename_journal(sqlite3_db_filename(database, "main")));
}

quint32 numberIn(const QByteArray& bytes, qsizetype offset) {
    return qFromBigEndian<quint32>(bytes.constData() + offset);
}

/// The count of changes in the journal's copy of the first page; nothing when it has none, or would not be played back.
std::optional<quint32> countInJournal(const QString& path) {
    constexpr qsizetype headerSize = 28;
    QFile journal(path);
    if (!journal.open(QIODevice::ReadOnly))
        return {};
    // The file's parts each begin with a header at the start of a sector.
    for (qint64 part = 0; journal.seek(part);) {
        const QByteArray header = journal.read(headerSize);
        if (header.size() < headerSize || !header.startsWith("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7"))
            return {};
        const quint32 sectorSize = numberIn(header, 20), pageSize = numberIn(header, 24);
        if (sectorSize < 32 || sectorSize > 0x10000 || pageSize < 512 || pageSize > 0x10000)
            return {};
        const qint64 recordSize = pageSize + 8;
        const qint64 first = part + sectorSize;
        // All ones: as many as there are.
        const qint64 records = qMin<qint64>(numberIn(header, 8), (journal.size() - first) / recordSize);
        for (qint64 record = 0; record < records; ++record) {
            if (!journal.seek(first + record * recordSize))
                return {};
            const QByteArray page = journal.read(4 + countOffset + 4);
            if (page.size() == 4 + countOffset + 4 && numberIn(page, 0) == 1)
                return numberIn(page, 4 + countOffset);
        }
        part = (first + records * recordSize + sectorSize - 1) / sectorSize * sectorSize;
    }
    return {};
}

/// While it lives nobody writes the file, as while SQLite reads it.
class SharedLock {
public:
    /// Fails while another program writes, or is about to.
    explicit SharedLock(sqlite3* database) {
        sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &m_file);
        int reserved = 0;
        m_held = m_file && m_file->pMethods && m_file->pMethods->xLock(m_file, SQLITE_LOCK_SHARED) == SQLITE_OK;
        m_quiet = m_held && m_file->pMethods->xCheckReservedLock(m_file, &reserved) == SQLITE_OK && !reserved;
    }
    ~SharedLock() {
        if (m_held)
            m_file->pMethods->xUnlock(m_file, SQLITE_LOCK_NONE);
    }
    Q_DISABLE_COPY(SharedLock)

    std::optional<quint32> countInFile() const {
        QByteArray bytes(4, '\0');
        if (!m_quiet || m_file->pMethods->xRead(m_file, bytes.data(), 4, countOffset) != SQLITE_OK)
            return {};
        return numberIn(bytes, 0);
    }

private:
    sqlite3_file* m_file = nullptr;
    bool m_held = false;
    bool m_quiet = false;
};

}  // namespace

bool isJournalOfAnotherFile(const QString& path) {
    const Database database = opened(path);
    if (!database || !QFile::exists(journalOf(database.get())))
        return false;
    const SharedLock lock(database.get());
    const std::optional<quint32> inFile = lock.countInFile();
    const std::optional<quint32> before = countInJournal(journalOf(database.get()));
    return inFile && before && *inFile != *before && *inFile != *before + 1;
}

void moveJournalAside(const QString& path) {
    const Database database = opened(path);
    QFile journal(database ? journalOf(database.get()) : QString());
    if (!journal.rename(journal.fileName() + QDateTime::currentDateTime().toString(u".yyyyMMdd-HHmmss"_s)))
        throw Error(75, u"无法移开日志文件 %1，请检查文件夹是否允许写入（%2）"_s.arg(
                            QDir::toNativeSeparators(journal.fileName()), journal.errorString()));
}
