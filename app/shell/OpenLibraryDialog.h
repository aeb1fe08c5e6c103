#pragma once

#include <QString>

class QWidget;

/// Asks for a library file in the dialog titled 打开, which starts in the Data folder, and gives its path; empty
/// when cancelled. A name may be typed without its extension and with blanks around it. The file need not exist.
[[nodiscard]] QString askForLibrary(QWidget* owner);
