#pragma once

#include <QString>

/// The file-system object. Its operations carry the names the rest of the program calls them by.
class FileSystem {
public:
    [[nodiscard]] bool FileExists(const QString& path) const;
    [[nodiscard]] bool FolderExists(const QString& path) const;

    /// Creates one level of folder. Throws Error 76 when the parent is missing or the folder cannot be made.
    void CreateFolder(const QString& path) const;

    /// Deletes a file; with `force` a write-protected one too. Throws Error 53 (not there) or 70 (refused).
    void DeleteFile(const QString& path, bool force = false) const;

    /// The path without its folders.
    QString GetFileName(const QString& path) const;

    /// What follows the last dot of the file name; empty when there is none.
    QString GetExtensionName(const QString& path) const;
};
