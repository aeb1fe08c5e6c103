#pragma once

#include <QString>

class CommandBars;
class KeyedGrid;
class QLineEdit;
class QToolBar;
class QWidget;

/// Small helpers shared by all windows (module ModPublic). They carry no state.

/// Selects the whole text of `txt`, when there is a text box.
void SelectAllText(QLineEdit* txt);

/// Equal neighbouring header cells of `grid` merge into one.
void Grid_MergeFix(KeyedGrid* grid);

/// The common look of toolbars: flat, not movable, without a customisation menu.
void InitCommandbarsStyle(QToolBar* bar);

/// The common look of grids: white, plain lines, whole rows selected.
void SetVSFlexGridStyle(KeyedGrid* grid);

/// The typed character `keyCode` (UTF-16) when it is one of `allowed`, letter case ignored, else 0. Backspace (8)
/// passes only on request.
int ValiText(int keyCode, const QString& allowed, bool allowBackspace);

/// Lets the mouse wheel change `box` only while it has the focus, and never gives it the focus.
void turnByWheelOnlyWithFocus(QWidget* box);
