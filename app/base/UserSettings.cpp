#include "app/base/UserSettings.h"

using namespace Qt::StringLiterals;

QSettings userSettings(const QString& window) {
    return {QSettings::defaultFormat(), QSettings::UserScope, u"Tessel"_s, window};
}
