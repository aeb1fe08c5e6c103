#include "app/base/FileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/base/Error.h"

using namespace Qt::StringLiterals;

bool FileSystem::FileExists(const QString& path) const { return QFileInfo(path).isFile(); }

bool FileSystem::FolderExists(const QString& path) const { return QFileInfo(path).isDir(); }

void FileSystem::CreateFolder(const QString& path) const {
    if (!QDir().mkdir(path))
        throw Error(76, u"无法创建文件夹: "_s + path);
}

void FileSystem::DeleteFile(const QString& path, bool force) const {
    if (!FileExists(path))
        throw Error(53, u"文件不存在: "_s + path);
    QFile file(path);
    if (force)
        file.setPermissions(file.permissions() | QFileDevice::WriteOwner | QFileDevice::WriteUser);
    else if (!QFileInfo(path).isWritable())
        throw Error(70, u"文件是只读的, 无法删除: "_s + path);
    if (!file.remove())
        throw Error(70, u"无法删除文件: "_s + path + u" ("_s + file.errorString() + u')');
}

QString FileSystem::GetFileName(const QString& path) const {
    return QFileInfo(QDir::fromNativeSeparators(path)).fileName();
}

QString FileSystem::GetExtensionName(const QString& path) const { return QFileInfo(path).suffix(); }
