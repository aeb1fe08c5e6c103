#pragma once

/// Start-up (module modMain).

/// Ends the process at once when another copy of this program folder is running; otherwise fills the process-wide
/// paths and shows the main window.
void Main();

/// Fills `cmdFile`, `dataPath` and `appPath`, and creates the Data folder when it is missing.
void SetBasePrm();

/// Makes the toolkit's own texts (dialog buttons, file dialog, text menus) Chinese, whatever the machine's language.
void loadChineseTexts();
