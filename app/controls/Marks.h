#pragma once

#include <QString>

/// How grids and trees show texts.
namespace Theme {

/// `text` in one line: each line end and each tab becomes one blank.
QString inOneLine(const QString& text);

/// The beginning of `text` in one line: as much as the widest window could show. Laying out a text of megabytes takes
/// seconds.
QString oneLine(const QString& text);

/// A tool tip that shows the beginning of `text` literally and breaks long lines.
QString plainToolTip(const QString& text);

}  // namespace Theme
