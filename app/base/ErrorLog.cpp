#include "app/base/ErrorLog.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include "app/base/Definitions.h"
#include "app/base/MessageBox.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "app/platform/Platform.h"

using namespace Qt::StringLiterals;

CurrentError& currentError() {
    static CurrentError error;
    return error;
}

clsErrorLog::clsErrorLog() : computerName(platform::computerName()) {}

QString clsErrorLog::recordText(const QString& module, const QString& procedure) const {
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    const QStringList lines{
        u"时    间: "_s + nowText(),
        u"计算机名: "_s + computerName,
        u"程序名称: "_s + program,
        u"版    本: "_s + applicationVersion(),
        u"错误位置: "_s + module + u'.' + procedure,
        u"错误号码: "_s + QString::number(currentError().number),
        u"错误描述: "_s + currentError().description,
        QString(80, u'='),
    };
    return lines.join(u"\r\n"_s) + u"\r\n"_s;
}

void clsErrorLog::WriteLog(const QString& module, const QString& procedure) {
    const QString record = recordText(module, procedure);
    QFile file(joinPath(programFolder(), u"Error.log"_s));
    if (file.open(QIODevice::Append)) {
        file.write((record + u"\r\n"_s).toLocal8Bit());
        file.close();
    }
    showMessage(record, u"错误信息"_s, MessageIcon::Information);
}
