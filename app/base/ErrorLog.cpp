#include "app/base/ErrorLog.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include "app/base/Definitions.h"
#include "app/base/MessageBox.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"

CurrentError& currentError() {
    static CurrentError error;
    return error;
}

clsErrorLog::clsErrorLog() : computerName(QSysInfo::machineHostName().left(255)) {}

QString clsErrorLog::recordText(const QString& module, const QString& procedure) const {
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    const QStringList lines{
        QStringLiteral("时    间: ") + nowText(),
        QStringLiteral("计算机名: ") + computerName,
        QStringLiteral("程序名称: ") + program,
        QStringLiteral("版    本: ") + applicationVersion(),
        QStringLiteral("错误位置: ") + module + QLatin1Char('.') + procedure,
        QStringLiteral("错误号码: ") + QString::number(currentError().number),
        QStringLiteral("错误描述: ") + currentError().description,
        QString(80, QLatin1Char('=')),
    };
    return lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n");
}

void clsErrorLog::WriteLog(const QString& module, const QString& procedure) {
    const QString record = recordText(module, procedure);
    QFile file(joinPath(programFolder(), QStringLiteral("Error.log")));
    if (file.open(QIODevice::Append)) {
        file.write((record + QLatin1String("\r\n")).toLocal8Bit());
        file.close();
    }
    showMessage(record, QStringLiteral("错误信息"), MessageIcon::Information);
}
