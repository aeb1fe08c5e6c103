#pragma once

#include <QDialog>
#include <QString>
#include <memory>

class CommandBars;
class Connection;
class KeyedGrid;
class KeyedTree;
class QComboBox;
class QToolBar;
class QTreeWidgetItem;
class RationReceiver;
class Recordset;

/// The ration browser: a list of ration libraries, the chapter tree of the chosen one and the rations of the chosen
/// chapter. A chosen ration goes to the editor that the browser serves.
///
/// A tool window that stays above its owner. It loads itself on first use: reads its placement from the user's settings
/// and the list of libraries from the system database. Closing it unloads it again; Esc only hides it. Ration libraries
/// are only read.
class frmDekBrowser : public QDialog {
    Q_OBJECT

public:
    explicit frmDekBrowser(QWidget* owner);
    ~frmDekBrowser() override;

    /// The one browser of the process, made on first call as a child of `owner`.
    static frmDekBrowser* shared(QWidget* owner);
    /// Takes an editor that is about to go out of the shared browser, if it is in there.
    static void forget(const RationReceiver* editor);

    /// The editor that receives the chosen ration; null for none.
    RationReceiver* ParetnForm() const { return m_editor; }
    void setParetnForm(RationReceiver* editor) { m_editor = editor; }

    /// Chooses the library with that id, else the first one, and reads its file anew. The chapter that is being looked
    /// at stays chosen when the library was chosen before.
    void setDekID(const QString& dekId);
    const QString& DekID() const { return m_dekId; }

    QComboBox* cboDek() const { return m_cboDek; }
    KeyedTree* tvRationContent() const { return m_tvRationContent; }
    KeyedGrid* grdDEB() const { return m_grdDEB; }
    CommandBars* CommandBars1() const { return m_commandBars; }

    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut(QToolBar* bar);
    void connectControls();
    void CreateActions();
    QToolBar* CreateToolbars();

    void Form_Load();
    void Form_Unload();
    void LoadDekCom2boList();
    void cboDek_Click();
    void LoadSYB();
    void CreateRationContent();
    void tvRationContent_NodeClick(QTreeWidgetItem* node);
    void LoadDeb(qint64 sybID);
    void ListDeb(Recordset& rows);
    void grdDEB_DblClick();
    void CommandBars1_Execute(int id);

    QString selectedLibrary() const;
    /// Hands the ration of the current row to the editor, if there are both.
    void sendToEditor(short mode);
    void clearLibrary();
    /// The column of units is laid out narrow; it grows when a unit would be cut off.
    void showUnitsWhole();

    QComboBox* m_cboDek;
    KeyedTree* m_tvRationContent;
    KeyedGrid* m_grdDEB;
    CommandBars* m_commandBars;

    RationReceiver* m_editor = nullptr;
    QString m_dekId;
    std::unique_ptr<Connection> m_library;
    bool m_loaded = false;
    bool m_wasShown = false;
};
