#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <functional>
#include <memory>

class frmEditor;
class KeyedGrid;
class QTreeWidgetItem;

/// A library open in an editor window of ordinary size, shown and painted, and the gestures of its user. All that the
/// measurements know of the window is here: its controls by their names, its commands by their ids.
class EditorWindow {
public:
    explicit EditorWindow(const QString& library);
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    /// Clicks the chapter with the code `code`; an empty one is the first.
    void clickChapter(const QString& code = QString());
    /// Clicks the full chapter, whose first bill is current then.
    void listFullChapter();
    /// Clicks the first `count` chapters in turn.
    void clickChapters(int count);
    void rebuildTree();

    KeyedGrid* bills() const { return grid("grdBillList"); }
    KeyedGrid* contents() const { return grid("grdConcent"); }

    /// Presses a key in the control that is named `control`.
    void press(const char* control, int key);
    /// Edits a cell of `grid` from F2 to Enter.
    void edit(KeyedGrid* grid, int row, const QString& key, const QString& text);
    /// Types into the search box and presses Enter.
    void search(const QString& text);
    /// Runs a command of the command-bar host `host`.
    void command(int host, int id);
    void undo();
    void redo();

    /// Milliseconds from `act` until the window has painted what came of it. What passes until a question is answered,
    /// with Yes or with `givenName`, does not count.
    double timed(const std::function<void()>& act);

    /// Lets the window paint what has changed.
    static void settle();

private:
    KeyedGrid* grid(const char* name) const;
    void clickNode(QTreeWidgetItem* node);

    QWidget m_mainWindow;
    std::unique_ptr<frmEditor> m_editor;
};

/// The name that a new chapter gets.
inline constexpr char givenName[] = "NEW";

/// Ends the program with its text when a message box appears outside EditorWindow::timed(): there is no user here.
void failOnMessages();
