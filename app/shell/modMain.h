#pragma once

/// Start-up (module modMain).

/// Ends the process at once when another copy of this program folder is running; otherwise fills the process-wide
/// paths and shows the main window.
void Main();

/// Fills `cmdFile`, `dataPath` and `appPath`, and makes what is missing of the program folder: the user's own one when
/// the copy is installed, and the Data folder.
void SetBasePrm();

/// Makes the toolkit's own texts (dialog buttons, file dialog, text menus) Chinese, whatever the machine's language.
void loadChineseTexts();
