#include "app/shell/ProgramFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QSaveFile>
#include <QScopeGuard>

#include "app/base/Error.h"
#include "app/base/Paths.h"

using namespace Qt::StringLiterals;

namespace {

/// What arrives is on the disk before the folder gets its name, and may be written, unlike its source.
bool copyFile(const QString& from, const QString& to) {
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        throw Error(75, u"无法读取程序自带的文件“%1”，请重新安装程序"_s.arg(from));
    const QByteArray content = source.readAll();
    QSaveFile copy(to);
    return content.size() == source.size() && QDir().mkpath(QFileInfo(to).path()) && copy.open(QIODevice::WriteOnly) &&
           copy.write(content) == content.size() && copy.commit();
}

}  // namespace

void makeProgramFolder() {
    const QString folder = programFolder();
    if (folder == installFolder())
        return;
    // Goes only when it is empty, as somebody may have left it.
    QDir().rmdir(folder);
    if (QFileInfo::exists(folder))
        return;
    const QString unfinished = folder + u".new"_s;
    const auto clear = qScopeGuard([&] { QDir(unfinished).removeRecursively(); });
    QDir(unfinished).removeRecursively();
    const QDir samples(samplesFolder());
    QDirIterator files(samples.path(), QDir::Files, QDirIterator::Subdirectories);
    bool whole = true;
    while (whole && files.hasNext()) {
        const QString from = files.next();
        whole = copyFile(from, joinPath(unfinished, samples.relativeFilePath(from)));
    }
    if (!whole || !QDir().rename(unfinished, folder))
        throw Error(
            76, u"无法建立您的数据文件夹“%1”，请检查它的上级文件夹是否允许写入、磁盘是否已满，然后重新启动程序"_s.arg(
                    folder));
}
