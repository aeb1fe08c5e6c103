#pragma once

#include <QWidget>

#include "app/controls/CommandBars.h"
#include "editor/common/LibraryHistory.h"
#include "editor/common/LibraryView.h"
#include "ration_browser/RationReceiver.h"

class BillPane;
class ChapterPane;
class Connection;
class ContentPane;
class FeaturePane;
class LibraryDocument;
class QLineEdit;
class QMenu;
class QTabWidget;

/// The editor of one bill library: chapter tree, bill list and the details of the current bill.
///
/// It puts the panes together around one LibraryDocument and holds the command tables of the four command-bar
/// hosts. Every edit is in the file when its event is over; there is nothing to save.
class frmEditor : public QWidget, public RationReceiver, public LibraryView {
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
    Connection* ormConn() const;
    /// Id of the library's default ration library; empty when it has none.
    QString DekID() const;
    const LibraryDocument& library() const { return *m_library; }
    /// What the user has to do first where he is; empty when there is nothing in the way.
    QString nextStep() const;

    /// Opens the library and fills the views. False when the library could not be opened: the window is to be unloaded
    /// then. The rest of the loading is done in that case too.
    bool Form_Load();
    /// Closes the library. Done by closing the window, once.
    void Form_Unload();

    bool commitPending() override;
    ViewPlace place() const override;
    void showAfresh(const ViewPlace& place) override;

    /// Takes the last step back, or does it once more.
    void undo();
    void redo();
    /// Shows what another program has written to the file.
    void showChangesOfOthers();

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

Q_SIGNALS:
    /// What the status bar is to say.
    void statusText(const QString& text, LibraryHistory::Offer offer = LibraryHistory::Offer::Nothing);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // EditorLayout.cpp
    void InitFormView();
    void SetVsGridStyle();
    void nameForScreenReaders();

    // EditorHints.cpp
    QString hintForBills() const;
    QString hintForDetails(const QString& what, const QString& empty) const;
    QString hintForValues() const;
    void showEmptyHints();

    void restoreSplitters();
    void saveSplitters() const;

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

    /// Whether the feature in that row has values to choose from.
    bool isEnumeration(int feature) const;

    bool isAt(const ViewPlace& place) const;
    bool mayRunCommand();
    bool readAfresh();

    void openRationBrowser(const QString& dekId);
    void loadRationLibraries();
    void firstPaintingDone();

    QWidget* m_mainWindow;
    QString m_DBFilePath;
    QString m_DBFileName;
    LibraryDocument* m_library;
    bool m_rationLibrariesLoaded = false;
    bool m_unloaded = false;

    // In this order, in which they hear of a change: contents before features.
    ChapterPane* m_chapters;
    BillPane* m_bills;
    ContentPane* m_contents;
    FeaturePane* m_features;
    QTabWidget* tabBillDetail;

    CommandBars* CommandBars1;
    CommandBars* CommandBars2;
    CommandBars* CommandBars3;
    CommandBars* CommandBars4;
    QLineEdit* m_searchText = nullptr;
};
