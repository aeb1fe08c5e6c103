#include "app/base/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString chosenFolder() { return qEnvironmentVariable("TESSEL_HOME"); }

QString asFolder(const QString& path) { return QDir::toNativeSeparators(QDir::cleanPath(path)); }

}  // namespace

QString installFolder() {
    return asFolder(chosenFolder().isEmpty() ? QCoreApplication::applicationDirPath() : chosenFolder());
}

QString samplesFolder() { return joinPath(installFolder(), u"Samples"_s); }

QString programFolder() {
    // Not by trying to write: the administrator, who may write there, would change what all users begin with.
    if (!chosenFolder().isEmpty() || !QFileInfo(samplesFolder()).isDir())
        return installFolder();
    return asFolder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

QString withSeparator(const QString& folder) {
    const QString native = QDir::toNativeSeparators(folder);
    return native.endsWith(QDir::separator()) ? native : native + QDir::separator();
}

QString joinPath(const QString& folder, const QString& name) {
    return withSeparator(folder) + QDir::toNativeSeparators(name);
}
