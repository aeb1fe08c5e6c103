#pragma once

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "app/shell/frmMain.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"
#include "storage/Connection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/Snapshot.h"

/// The real main window with one library open, and the gestures of its user. Every gesture is made of real events.
class EditorDriver {
public:
    /// Makes a main window of its own, for which a file is as good as written when the system has it: thousands of
    /// edits need not wait for the disk. Without a path no library is open.
    explicit EditorDriver(const QString& path = {});

    /// Takes `window` over as it is, with the library at `path` open in it.
    EditorDriver(frmMain* window, const QString& path) : m_path(path), m_main(window) {}

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

    KeyedTree* tree() const { return editor()->chapterPane()->tvSYB(); }
    KeyedGrid* bills() const { return editor()->billPane()->grdBillList(); }
    KeyedGrid* features() const { return editor()->featurePane()->grdSpec(); }
    KeyedGrid* values() const { return editor()->featurePane()->grdSpecEnum(); }
    KeyedGrid* contents() const { return editor()->contentPane()->grdConcent(); }
    QPlainTextEdit* rule() const { return editor()->billPane()->txtRule(); }
    QPlainTextEdit* content() const { return editor()->billPane()->txtContent(); }
    QComboBox* profession() const { return editor()->contentPane()->cboProfession(); }
    QLineEdit* search() const { return editor()->findChild<QLineEdit*>(u"CommandBars2.203"_s); }
    /// Code of the selected chapter; empty when none is.
    QString chapter() const { return KeyedTree::tag(tree()->selectedNode()); }

    /// Brings the page that holds `pane` to the front by a click on its tab.
    void showPage(QWidget* pane) const;
    void click(KeyedTree::Node* node, Qt::MouseButton button = Qt::LeftButton) const { click(tree(), node, button); }
    static void click(KeyedTree* in, KeyedTree::Node* node, Qt::MouseButton button = Qt::LeftButton) {
        clickItem(in, in->indexFromItem(node), button);
    }
    void click(KeyedGrid* grid, int row, const QString& key, Qt::MouseButton button = Qt::LeftButton) const;
    /// Without an item it goes to the middle.
    static void clickItem(QAbstractItemView* view, const QModelIndex& item, Qt::MouseButton button = Qt::LeftButton);
    static void key(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
    }

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
    void typeInto(QWidget* box, const QString& text) const;

    bool isEnabled(int host, int id) const { return editor()->commandBars(host)->isEnabled(id); }
    /// Runs a command as a toolbar or menu does.
    void run(int host, int id) const { editor()->commandBars(host)->execute(id); }
    /// Runs a command that is enabled with the mouse: by its button, else from the context menu of its pane.
    void runByMouse(int host, int id) const;

    /// An answer to a dialog: enters one text after the other into its box `box`, and leaves it if it is still there.
    static std::function<void(QWidget*)> entering(const QString& box, const QStringList& texts);
    void activate() { activate(m_main); }
    static void activate(QWidget* window);
    /// Goes to another window and comes back.
    void comeBack();
    /// What a window shows that is opened on the library now and brought to the same place.
    Snapshot shownAfresh() const;
    /// Lets the event that is going on end: what it posted is dealt with.
    static void settle();

    /// Statements on the editor's own connection that change how it behaves, not what is in the file.
    void pragma(const SqlText& statement) const { editor()->ormConn()->OpenRecordset(statement); }

private:
    void makeWindow();

    QString m_path;
    std::unique_ptr<frmMain> m_own;
    frmMain* m_main;
};
