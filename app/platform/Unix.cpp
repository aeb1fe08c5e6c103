#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QSysInfo>

#include "app/platform/Platform.h"

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// One file per user, machine and program folder. The settings folder may be shared by all machines of a user, and a
/// process that died on another one cannot be told from a running one.
QString lockPath(const QString& folder) {
    const QDir settings(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    settings.mkpath(u"."_s);
    const QByteArray copy =
        QSysInfo::machineUniqueId() + '\n' + QSysInfo::machineHostName().toUtf8() + '\n' + folder.toLower().toUtf8();
    const QByteArray name = QCryptographicHash::hash(copy, QCryptographicHash::Sha1).toHex().left(16);
    return settings.filePath(u"tessel-%1.lock"_s.arg(QLatin1String(name)));
}

bool namesAProcess(const QLockFile& lock) {
    qint64 process = 0;
    QString host;
    QString program;
    return lock.getLockInfo(&process, &host, &program);
}

}  // namespace

QString commandLine() { return QCoreApplication::arguments().mid(1).join(u' '); }

QString computerName() { return QSysInfo::machineHostName().left(255); }

bool becomeRunningCopy(const QString& folder) {
    static QLockFile lock(lockPath(folder));
    // By default a lock file counts as stale after some time; here only when its process is gone.
    lock.setStaleLockTime(0);
    const auto isTaken = [] { return !lock.tryLock() && lock.error() == QLockFile::LockFailedError; };
    // A lock file that names no process was left half written by a crash. One that is in use cannot be removed.
    return !isTaken() || (!namesAProcess(lock) && lock.removeStaleLockFile() && !isTaken());
}

QString objectionTo(const QString&) { return {}; }

bool hasFileDialog() { return false; }

}  // namespace platform
