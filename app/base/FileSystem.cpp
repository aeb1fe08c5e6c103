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
        throw Error(76, u"无法创建文件夹“%1”，请检查上级文件夹是否存在、是否允许写入"_s.arg(path));
}

void FileSystem::DeleteFile(const QString& path, bool force) const {
    if (!FileExists(path))
        throw Error(53, u"文件“%1”不存在"_s.arg(path));
    QFile file(path);
    if (force)
        file.setPermissions(file.permissions() | QFileDevice::WriteOwner | QFileDevice::WriteUser);
    else if (!QFileInfo(path).isWritable())
        throw Error(70, u"文件“%1”不允许写入，没有删除；请检查它的属性"_s.arg(path));
    if (!file.remove())
        throw Error(70, u"无法删除文件“%1”，请检查它是否正被其他程序占用（%2）"_s.arg(path, file.errorString()));
}

QString FileSystem::GetFileName(const QString& path) const {
    return QFileInfo(QDir::fromNativeSeparators(path)).fileName();
}

QString FileSystem::GetExtensionName(const QString& path) const { return QFileInfo(path).suffix(); }
