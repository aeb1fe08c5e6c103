#pragma once

#include <QWidget>
#include <memory>

#include "app/controls/CommandBars.h"
#include "ration_browser/RationReceiver.h"
#include "storage/Connection.h"

class BillPane;
class ChapterPane;
class ContentPane;
class FeaturePane;
class QLineEdit;
class QMenu;
class QTabWidget;

/// The editor of one bill library: chapter tree, bill list and the details of the current bill.
///
/// It owns the connection on the library, puts the panes together and holds the command tables of the four command-bar
/// hosts. Every edit is in the file when its event is over; there is nothing to save.
class frmEditor : public QWidget, public RationReceiver {
    Q_OBJECT

public:
    /// `mainWindow` owns the ration browser and gives dialogs their icon.
    explicit frmEditor(QWidget* mainWindow);
    ~frmEditor() override;

    /// Full path of the library file. Set it before Form_Load(); it also sets DBFileName.
    QString DBFilePath() const { return m_DBFilePath; }
    void setDBFilePath(const QString& path);
    /// The file name without its folders; the caption and the key into the system database.
    QString DBFileName() const { return m_DBFileName; }

    /// The connection on the library; null when it could not be opened.
    Connection* ormConn() const { return m_ormConn.get(); }
    /// Id of the library's default ration library; empty when it has none.
    QString DekID() const;

    /// Opens the library and fills the views. False when the library could not be opened: the window is to be unloaded
    /// then. The rest of the loading is done in that case too.
    bool Form_Load();
    /// Detaches the companion file and closes the connection. A connection that cannot be detached or closed stays
    /// open until the process ends. Done by closing the window, once.
    void Form_Unload();

    /// Ends what is still being typed as an edit. False when a cell editor had to stay open.
    bool commitPending();

    // What the ration browser asks for.
    void WinCommand(RationMode mode, const QString& deh, const QString& dekID) override;
    QString receivingRow() const override;
    QRect receivingRect() const override;

    ChapterPane* chapterPane() const { return m_chapters; }
    BillPane* billPane() const { return m_bills; }
    FeaturePane* featurePane() const { return m_features; }
    ContentPane* contentPane() const { return m_contents; }
    /// Host 1 to 4.
    CommandBars* commandBars(int host) const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // EditorLayout.cpp
    void InitFormView();
    void SetVsGridStyle();
    void connectPanes();

    // EditorActions.cpp: what the commands are, do, and when they are enabled.
    void CreateActions();
    std::vector<CommandAction> chapterActions();
    std::vector<CommandAction> billActions();
    std::vector<CommandAction> featureActions();
    std::vector<CommandAction> featureValueActions();

    // EditorBars.cpp: where the commands are shown.
    void CreateToolbarsContent();
    void CreateToolbarsBill();
    void CreateContextMenus();
    void LoadAllToolbarsIcons();

    void chapterClicked(const QString& tag);
    void deleteContentRow();
    void lockDetailsOfDeletedBill();
    void openRationBrowser(const QString& dekId);

    QWidget* m_mainWindow;
    QString m_DBFilePath;
    QString m_DBFileName;
    std::unique_ptr<Connection> m_ormConn;
    bool m_unloaded = false;

    ChapterPane* m_chapters;
    BillPane* m_bills;
    FeaturePane* m_features;
    ContentPane* m_contents;
    QTabWidget* tabBillDetail;

    CommandBars* CommandBars1;
    CommandBars* CommandBars2;
    CommandBars* CommandBars3;
    CommandBars* CommandBars4;
    QLineEdit* m_searchText = nullptr;
};
