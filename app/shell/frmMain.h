#pragma once

#include <QMainWindow>

#include "app/controls/CommandBars.h"
#include "editor/common/LibraryHistory.h"

class QMdiArea;
class QMdiSubWindow;
class QTimer;
class StatusLine;
class WindowList;
class frmEditor;

/// The main window: a frame with one editor child window per open library.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    frmMain();
    ~frmMain() override;

    /// Builds commands, menus, toolbar and status bar, and opens the library that the command line names.
    void MDIForm_Load();

    // Library documents (LibraryDocuments.cpp).
    void mnuNewBillDB_Click();
    void mnuOpenBillDB_Click();
    void mnuFileClose_Click();
    void mnuAllFileClose_Click();
    /// Creates an empty library at `path`, in place of a file that is there. False when that was not possible; a
    /// library that is open in an editor is left untouched.
    [[nodiscard]] bool NewBillDB(const QString& path);
    /// Opens an editor window on `path`.
    void LoadBillDB(const QString& path);

    /// The editor of the active child window, or null.
    frmEditor* activeEditor() const;
    QList<frmEditor*> editors() const;
    CommandBars* commandBars() const { return m_commandBars; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // MainCommands.cpp
    void CreateActions();
    void CreateDefaultMenu();
    void CreateMDIMenu();
    void CreateToolbars();
    void CreateStatusbar();
    void addMenu(const QString& title, const std::vector<MenuEntry>& entries, std::vector<QMenu*>& set);
    void showMenuSet();
    void exitProgram();

    /// The window of the library whose path is `path`, letter case ignored; null when there is none.
    QMdiSubWindow* windowOf(const QString& path) const;
    /// Whether the file at `path` is open in an editor.
    bool isOpen(const QString& path) const;
    /// Captions: the file name, and the folder behind it when libraries in several folders have that name.
    void nameWindows();
    void activeWindowChanged();

    /// Shows `text` in the pane of the status bar for some seconds. When it is empty: what the active editor asks for,
    /// else "Ready".
    void showStatus(const QString& text, LibraryHistory::Offer offer = LibraryHistory::Offer::Nothing);
    void createUndoKeys();

    QMdiArea* m_windows;
    CommandBars* m_commandBars;
    WindowList* m_windowList;
    std::vector<QMenu*> m_defaultMenus;
    std::vector<QMenu*> m_documentMenus;
    StatusLine* m_status;
    QTimer* m_statusTimer;
    LibraryHistory::Offer m_offer = LibraryHistory::Offer::Nothing;
    const QMdiSubWindow* m_lastActive = nullptr;
};
