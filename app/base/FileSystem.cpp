#include "app/base/FileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/base/Error.h"

bool FileSystem::FileExists(const QString& path) const { return QFileInfo(path).isFile(); }

bool FileSystem::FolderExists(const QString& path) const { return QFileInfo(path).isDir(); }

void FileSystem::CreateFolder(const QString& path) const {
    if (!QDir().mkdir(path))
        throw Error(76, QStringLiteral("无法创建文件夹: ") + path);
}

void FileSystem::DeleteFile(const QString& path, bool force) const {
    if (!FileExists(path))
        throw Error(53, QStringLiteral("文件不存在: ") + path);
    QFile file(path);
    if (force)
        file.setPermissions(file.permissions() | QFileDevice::WriteOwner | QFileDevice::WriteUser);
    else if (!QFileInfo(path).isWritable())
        throw Error(70, QStringLiteral("文件是只读的, 无法删除: ") + path);
    if (!file.remove())
        throw Error(
            70, QStringLiteral("无法删除文件: ") + path + QLatin1String(" (") + file.errorString() + QLatin1Char(')'));
}

QString FileSystem::GetFileName(const QString& path) const {
    return QFileInfo(QDir::fromNativeSeparators(path)).fileName();
}

QString FileSystem::GetExtensionName(const QString& path) const { return QFileInfo(path).suffix(); }
