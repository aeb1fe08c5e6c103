#pragma once

#include <QLineEdit>
#include <QStringList>
#include <QWidget>

#include "editor/contents/ContentPane.h"
#include "tests/contents/RationLibraries.h"
#include "tests/support/TemporaryLibrary.h"

/// A shown, active window with the contents of bill 7 (code 010101001) of a library, and a text box beside them. Ration
/// libraries "GD2018ZHDE01" and "GD2018ZHDE03" are listed and there; "GONE" is listed and missing.
class ContentWindow : public QWidget {
public:
    ContentWindow();

    KeyedGrid& grid() const { return *pane.grdConcent(); }
    /// Row whose text is `cont`, -1 when there is none.
    int rowOf(const QString& cont) const;
    /// Makes the row whose text is `cont` current.
    void select(const QString& cont) const;

    /// The rows as "level|cont|Unit|dekName|contID|contDeID|contNum|subNum|contType".
    QStringList shown() const;
    /// What a fresh load of the file would show.
    QStringList fresh() const;
    /// The visible texts alone, indented by level.
    QStringList outline() const;

    /// Opens the editor of a cell as F2 does; the line editor, or null when the cell cannot be edited.
    QLineEdit* openEditor(int row, const QString& key = QStringLiteral("cont")) const;
    /// Opens the editor of the text of a row, types `text` and presses `end`.
    void type(int row, const QString& text, Qt::Key end = Qt::Key_Return) const;
    /// Chooses the ration library `dekId` in the list of a ration row.
    void chooseLibrary(int row, const QString& dekId) const;
    void key(Qt::Key key) const;
    /// Where the file of "GONE" would be.
    QString missingLibrary() const;
    /// Makes sure that keys arrive in the grid, whatever box was there before.
    void activate() const;

    TemporaryLibrary library;
    RationLibraries rations;
    CurrentBill bill{7, QStringLiteral("010101001")};
    ContentPane pane;
    QLineEdit other;
};

/// Presses the keys for `text` in the widget that has the focus.
void typeText(const QString& text);
