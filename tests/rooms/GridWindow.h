#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWidget>

#include "app/controls/KeyedGrid.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

/// A shown, active window with a grid of four bills, of which the second is current, and a text box; and a button in a
/// window of its own.
class GridWindow : public ::testing::Test {
protected:
    GridWindow();

    /// Does one gesture after the other, separated by "; ": "key Shift+Tab", "type 挖土", "click 1 Name" (right,
    /// double, with Shift: shift, at the end of the cell: end), "drag 3 0 Unit", "compose wa" and "committed 挖" by an
    /// input method, "menukey", "window" (a click on the button), "leave" (for the text box); by program "row 3",
    /// "cell 3 Unit", "commit", "focus". Gives what the grid told and asked meanwhile, joined by ", ".
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
    void activate() { EXPECT_TRUE(makeActive(&window)); }
    /// Clicks as a mouse does: the event reaches the window first, which gives it to `widget`.
    static void clickOn(QWidget& widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
                        Qt::KeyboardModifiers keys = {});
    static void drag(QWidget& widget, const QPoint& from, const QPoint& to);
    QRect cell(int row, const QString& key) const;
    QWidget* editor() const { return grid.findChild<QWidget*>(u"cellEditor"_s); }
    QLineEdit* lineEditor() const { return qobject_cast<QLineEdit*>(editor()); }
    /// The texts of a column, joined by blanks.
    QString texts(const QString& key) const;

    const QString name = u"Name"_s;
    const QString unit = u"Unit"_s;
    QWidget window;
    KeyedGrid grid;
    QLineEdit other;
    QPushButton otherWindow;
    QStringList told;
};
