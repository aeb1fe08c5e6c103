#pragma once

#include <QString>
#include <QStringList>

/// The files that are measured. They lie in a temporary folder (TMPDIR chooses where) that goes with the process.

/// Makes the program folder with its ration libraries; appPath and dataPath point there.
void makeProgramFolder();

/// The generated library of `bills` bills, made on first use; it is only read.
QString generatedLibrary(int bills);

/// The same with nothing below its bills.
QString bareLibrary(int bills);

/// A copy of `library` with the indexes that fit what is asked of a library, made on first use; it is only read.
QString indexedLibrary(const QString& library);
/// The statements that make them.
extern const char* const fittingIndexes;

/// A copy of a library, written through to the disk, that goes when the object does.
class LibraryCopy {
public:
    explicit LibraryCopy(const QString& original);
    ~LibraryCopy();
    LibraryCopy(const LibraryCopy&) = delete;
    LibraryCopy& operator=(const LibraryCopy&) = delete;

    const QString& path() const { return m_path; }

    /// Makes the file what the original is again. Only what differs is written, so that the disk has little to do.
    void restore() const;

private:
    QString m_original;
    QString m_path;
};

/// Where two libraries differ, leaving LastUpdate aside; empty when they hold the same rows and no index.
QString difference(const QString& path, const QString& otherPath);
