#pragma once

#include <QLineEdit>
#include <QTest>
#include <QWidget>

#include "app/controls/KeyedGrid.h"

using namespace Qt::StringLiterals;

/// A shown, active window with a grid of bills and a text box beside it. What the grid tells is noted in `told`.
class GridWindow : public QWidget {
public:
    GridWindow();

    void fill(int rows);
    /// Makes the window active again: without a window manager a closed popup or box leaves none active.
    void activate();
    /// The point in the viewport in the middle of a cell.
    QPoint at(int row, const QString& key) const;
    void click(int row, const QString& key, Qt::MouseButton button = Qt::LeftButton);
    void doubleClick(int row, const QString& key);
    /// Clicks as a mouse does: the event reaches the window first, which gives it to `widget`.
    void clickOn(QWidget& widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton);
    /// Presses the left button on one cell and releases it on another.
    void drag(int fromRow, int toRow, const QString& key);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);

    QWidget* editor() const { return grid.findChild<QWidget*>(u"cellEditor"_s); }
    QLineEdit* lineEditor() const { return qobject_cast<QLineEdit*>(editor()); }
    /// What the grid has told since the last call, joined by ", ".
    QString takeTold() { return std::exchange(told, {}).join(u", "_s); }

    KeyedGrid grid;
    QLineEdit other;
    QStringList told;
    /// Each edit that validateEdit was asked about, as "row key text".
    QStringList asked;
    EditVerdict verdict = EditVerdict::Accept;
};
