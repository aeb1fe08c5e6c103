#pragma once

#include <QSettings>
#include <QString>

/// What the program remembers for this user of the window `window` (a form's name): placements, sizes, widths.
QSettings userSettings(const QString& window);
