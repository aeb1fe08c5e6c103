#pragma once

#include <QString>
#include <array>
#include <vector>

#include "storage/Connection.h"

/// Writes the files that users only read: ration libraries, and the system database that lists them. Every function
/// throws Error when it cannot write.

/// What a ration library holds.
struct RationFile {
    /// A row of `DeSYB`.
    struct Chapter {
        qint64 id = 0;                ///< sybID
        std::array<int, 5> number{};  ///< CH, ZH, JH, XH, MH: chapter, section, … sub-item; 0 for a level not used
        QString title;                ///< BTM
        bool removed = false;         ///< isdel: no longer shown
    };
    /// A row of `DEB`; its ID counts the rations.
    struct Ration {
        qint64 chapter = 0;  ///< sybID
        QString code;        ///< DEH: looked up without regard to letter case
        QString name;        ///< MC
        QString unit;        ///< DW
    };
    std::vector<Chapter> chapters;
    std::vector<Ration> rations;
};

/// A row of `SysBaseData`, the ration libraries that the program knows.
struct ListedRationLibrary {
    QString id;               ///< DekId
    QString name;             ///< DekName: what users choose it by
    QString fileName;         ///< DekFilename, in the folder of the region
    QString region;           ///< rgnName: name of that folder in Data
    QString profession = {};  ///< Prof: orders the ration browser's list
    QString defaultFor = {};  ///< QdkFileName: file name of the bill library whose default it is
};

/// Makes `DeSYB` and `DEB`, the tables of a ration library.
void createRationTables(Connection& library);

/// Makes `SysBaseData`, the table of the system database.
void createSystemTable(Connection& system);

/// A database file in the making, in one transaction beside the file at its path, which is replaced by a complete one
/// only.
class NewDatabase {
public:
    /// `key` is empty for a plain file. Missing folders are made.
    explicit NewDatabase(const QString& path, const char* key = "");
    /// Takes it away again unless replace() was called.
    ~NewDatabase();
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;

    Connection& connection() { return m_connection; }

    /// Commits, and puts the file in the place of the old one, with the same permissions. Throws when SQLite would play
    /// back into it what another program has left beside the old one.
    void replace();

private:
    QString m_path;
    QString m_newPath;
    Connection m_connection;
};

/// Makes the file of a ration library, a plain one.
void writeRationLibrary(const QString& path, const RationFile& library);

/// The rows of `SysBaseData`.
std::vector<ListedRationLibrary> listedLibraries(Connection& system);

/// Puts `library` in the place of the first row with its id, or adds it. Other rows, and columns that are none of ours,
/// stay as they are.
void listLibrary(Connection& system, const ListedRationLibrary& library);

/// Makes a system database, protected with the system key.
void writeSystemDatabase(const QString& path, const std::vector<ListedRationLibrary>& libraries);
