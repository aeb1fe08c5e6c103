#include "app/base/Paths.h"

#include <QCoreApplication>
#include <QDir>

QString programFolder() {
    const QString chosen = qEnvironmentVariable("TESSEL_HOME");
    return QDir::toNativeSeparators(
        QDir::cleanPath(chosen.isEmpty() ? QCoreApplication::applicationDirPath() : chosen));
}

QString withSeparator(const QString& folder) {
    const QString native = QDir::toNativeSeparators(folder);
    return native.endsWith(QDir::separator()) ? native : native + QDir::separator();
}

QString joinPath(const QString& folder, const QString& name) {
    return withSeparator(folder) + QDir::toNativeSeparators(name);
}
