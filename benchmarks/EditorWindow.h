#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QWidget>
#include <functional>

#include "editor/frmEditor.h"

/// A library open in an editor window of ordinary size, shown and painted.
class EditorWindow {
public:
    explicit EditorWindow(const QString& library);

    frmEditor* operator->() { return &m_editor; }

    /// Clicks the full chapter, whose first bill is current then.
    void listFullChapter();

    /// Milliseconds from `act` until the window has painted what came of it.
    double timed(const std::function<void()>& act);

    /// The same for a command that asks first: what passes until the question is answered with Yes, or with
    /// `givenName`, does not count.
    double timedAfterAnswer(const std::function<void()>& act);

private:
    QWidget m_mainWindow;
    frmEditor m_editor;
};

/// The name that a new chapter gets.
inline constexpr char givenName[] = "NEW";

/// What the user's press of `key` does.
void pressKey(QWidget* widget, int key);

/// Ends the program with its text when a message box appears that nobody answers: there is no user here.
void failOnMessages();
