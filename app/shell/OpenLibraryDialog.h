#pragma once

#include <QString>

class QWidget;

/// Asks for a library file in the dialog titled 打开, which starts in the Data folder, and gives its path without
/// surrounding blanks; empty when cancelled. The file need not exist. The toolkit's own dialog is used: it speaks
/// Chinese on every machine.
QString askForLibrary(QWidget* owner);
