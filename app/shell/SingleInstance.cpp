#include "app/shell/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>
#include <QSysInfo>

#include "app/base/Paths.h"

using namespace Qt::StringLiterals;

namespace {

/// One file per user, machine and program folder. The settings folder may be shared by all machines of a user, and a
/// process that died on another one cannot be told from a running one. The folder may be written in any letter case.
QString lockPath() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    QDir().mkpath(folder);
    const QByteArray copy = QSysInfo::machineUniqueId() + '\n' + QSysInfo::machineHostName().toUtf8() + '\n' +
                            programFolder().toLower().toUtf8();
    const QByteArray name = QCryptographicHash::hash(copy, QCryptographicHash::Sha1).toHex().left(16);
    return joinPath(folder, u"tessel-"_s + QString::fromLatin1(name) + u".lock"_s);
}

bool namesAProcess(const QLockFile& lock) {
    qint64 process = 0;
    QString host;
    QString program;
    return lock.getLockInfo(&process, &host, &program);
}

}  // namespace

SingleInstance::SingleInstance() : m_lock(std::make_unique<QLockFile>(lockPath())) {
    // By default a lock file counts as stale after some time; here only when its process is gone.
    m_lock->setStaleLockTime(0);
    const auto isTaken = [this] { return !m_lock->tryLock() && m_lock->error() == QLockFile::LockFailedError; };
    m_anotherIsRunning = isTaken();
    // A lock file that names no process was left half written by a crash. One that is in use cannot be removed.
    if (m_anotherIsRunning && !namesAProcess(*m_lock) && m_lock->removeStaleLockFile())
        m_anotherIsRunning = isTaken();
}
