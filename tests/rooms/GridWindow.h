#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWidget>

#include "app/controls/KeyedGrid.h"

using namespace Qt::StringLiterals;

/// A shown, active window with a grid of bills, a text box and a button, and a button in a window of its own.
class GridWindow : public QWidget {
public:
    GridWindow();

    /// Does one gesture after the other, separated by "; ": "key Shift+Tab", "type 挖土", "click 1 Name" (right,
    /// double, press at the end of the cell: "end 1 Name"), "drag 3 0 Unit", "compose wa" and "committed 挖" by an
    /// input method, "menukey", "button", "window" (clicks on the buttons), "leave" (for the text box); by program "row
    /// 3", "cell 3 Unit", "commit", "focus". Gives what the grid told and asked meanwhile, joined by ", ".
    QString does(const QString& gestures);
    /// The current cell, and the text of an open editor: "1 Name [挖土]".
    QString state() const;

    struct Step {
        const char* gestures;
        const char* told;
        const char* state = nullptr;
    };
    void expect(std::initializer_list<Step> steps);

    void fill(int rows);
    /// Makes the window active again: without a window manager a closed popup or box leaves none active.
    void activate();
    /// Clicks as a mouse does: the event reaches the window first, which gives it to `widget`.
    static void clickOn(QWidget& widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton);
    QRect cell(int row, const QString& key) const;
    QWidget* editor() const { return grid.findChild<QWidget*>(u"cellEditor"_s); }
    QLineEdit* lineEditor() const { return qobject_cast<QLineEdit*>(editor()); }
    /// The texts of a column, joined by blanks.
    QString texts(const QString& key) const;

    KeyedGrid grid;
    QLineEdit other;
    QPushButton button, otherWindow;
    QStringList told;
};
