#pragma once

#include <memory>

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "app/shell/frmMain.h"
#include "editor/frmEditor.h"
#include "storage/Connection.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;

/// The real main window with one library open, and the gestures of its user. Every gesture is made of real events.
class EditorDriver {
public:
    /// Makes a main window of its own, for which a file is as good as written when the system has it: thousands of
    /// edits need not wait for the disk.
    explicit EditorDriver(const QString& path);

    /// Takes `window` over as it is, with the library at `path` open in it.
    EditorDriver(frmMain* window, const QString& path);

    enum class Closing {
        Command,
        Key,
        Child,  ///< by its own close box
        Main,   ///< together with the main window, where that is the driver's own; another one is made
    };
    /// Closes the library; false when it stays open because of an edit that is refused.
    bool close(Closing way = Closing::Command);
    void open();
    bool ownsWindow() const { return m_own != nullptr; }

    frmMain* window() const { return m_main; }
    frmEditor* editor() const { return m_main->activeEditor(); }
    const QString& path() const { return m_path; }

    KeyedTree* tree() const;
    KeyedGrid* bills() const;
    KeyedGrid* features() const;
    KeyedGrid* values() const;
    KeyedGrid* contents() const;
    QPlainTextEdit* rule() const;
    QPlainTextEdit* content() const;
    QComboBox* profession() const;
    QLineEdit* search() const;
    /// Code of the selected chapter; empty when none is.
    QString chapter() const;

    /// Brings the page that holds `pane` to the front by a click on its tab.
    void showPage(QWidget* pane) const;
    void click(KeyedTree::Node* node, Qt::MouseButton button = Qt::LeftButton) const { click(tree(), node, button); }
    static void click(KeyedTree* in, KeyedTree::Node* node, Qt::MouseButton button = Qt::LeftButton);
    void click(KeyedGrid* grid, int row, const QString& key, Qt::MouseButton button = Qt::LeftButton) const;
    void key(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}) const;

    /// Opens the editor of a cell with F2; null when the cell may not be edited.
    QWidget* openEditor(KeyedGrid* grid, int row, const QString& key) const;
    /// Types over the whole text of an open editor; several lines are pasted.
    static void typeOver(QWidget* editor, const QString& text);
    static void pasteOver(QWidget* editor, const QString& text);
    /// Opens a cell's drop-down list by a double click or F2; null when the cell may not be edited.
    QComboBox* openList(KeyedGrid* grid, int row, const QString& key, bool byMouse) const;
    /// Chooses an entry of an open list.
    static void choose(QComboBox* list, int entry, bool byMouse);

    /// Edits a cell: F2, the text, then the key `end`. False when the cell may not be edited.
    bool edit(KeyedGrid* grid, int row, const QString& key, const QString& text, int end = Qt::Key_Return) const;
    /// Replaces the text of a box by typing; does not leave it.
    void typeInto(QPlainTextEdit* box, const QString& text) const;
    void typeQuery(const QString& text) const;

    bool isEnabled(int host, int id) const { return editor()->commandBars(host)->isEnabled(id); }
    /// Runs a command as a toolbar or menu does.
    void run(int host, int id) const { editor()->commandBars(host)->execute(id); }
    /// Runs a command that is enabled with the mouse: by its button, else from the context menu of its pane.
    void runByMouse(int host, int id) const;

    /// Closes the context menu that is open with Esc; false when none is.
    bool closeMenu();
    void activate() { activate(m_main); }
    static void activate(QWidget* window);
    /// Lets the event that is going on end: what it posted is dealt with.
    static void settle();

    /// Statements on the editor's own connection that change how it behaves, not what is in the file.
    void pragma(const SqlText& statement) const;

private:
    void makeWindow();

    QString m_path;
    std::unique_ptr<frmMain> m_own;
    frmMain* m_main;
};
