#pragma once

#include <QDialog>
#include <QHash>
#include <QString>
#include <memory>

class CommandBars;
class Connection;
class ElidedLine;
class FindBar;
class KeyedGrid;
class KeyedTree;
class QComboBox;
class QToolBar;
class QTreeWidgetItem;
class RationReceiver;
class RationSearch;
class Recordset;
enum class RationMode : short;
struct RationPlace;

/// The ration browser: a list of ration libraries, the chapter tree of the chosen one and the rations of the chosen
/// chapter. A chosen ration goes to the editor that the browser serves.
///
/// A tool window that stays above its owner. It loads itself on first use: reads its placement from the user's settings
/// and the list of libraries from the system database. Closing it unloads it again; Esc only hides it. A library that
/// is asked for again is shown as it was left. Ration libraries are only read.
///
/// What is typed into its list is searched in the codes and names of the whole library; tree and list go to the hits.
///
/// Until the user has put it somewhere it opens beside the editor's row that it serves. A line at its foot tells which
/// row that is.
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
    void setParetnForm(RationReceiver* editor);

    /// Chooses the library with that id, else the first one, and reads its file anew. Chapter, ration and open nodes
    /// are those that were left when the library was shown last.
    void setDekID(const QString& dekId);
    const QString& DekID() const { return m_dekId; }

    QComboBox* cboDek() const { return m_cboDek; }
    KeyedTree* tvRationContent() const { return m_tvRationContent; }
    KeyedGrid* grdDEB() const { return m_grdDEB; }
    CommandBars* CommandBars1() const { return m_commandBars; }
    /// The line at the foot: which row of the editor would receive a ration, or why none would.
    const ElidedLine* lblReceiver() const { return m_lblReceiver; }

    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static constexpr QSize initialSize{880, 600};

    /// What the user was looking at in a ration library.
    struct Place {
        QStringList openNodes;
        QString chapter;
        QString ration;
    };

    // frmDekBrowserLayout.cpp
    void layOut(QToolBar* bar);
    void connectControls();
    void CreateActions();
    QToolBar* CreateToolbars();
    void setKeys();

    // frmDekBrowserPlace.cpp
    void showReceiver();
    void placeBesideReceiver();
    bool isPlacedByUser() const;
    void rememberPlace();
    void returnToPlace();

    // frmDekBrowserFind.cpp
    /// The rations of the library that is shown, read when they are first asked for.
    RationSearch& rations();
    RationPlace currentPlace();
    void goToHit(RationPlace (RationSearch::*hit)(const RationPlace&) const);
    void showPlace(const RationPlace& place);
    /// As goToHit() by command: without anything to find it asks what.
    void step(RationPlace (RationSearch::*hit)(const RationPlace&) const);
    void closeFind();
    /// Tells which of the hits is current, and how many there are.
    void showFound();
    /// Where a chapter has no rations of its own, its empty list tells how many lie below it.
    void hintAtRationsBelow();

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

    QString selectedLibrary() const;
    /// Hands the ration of the current row to the editor, if there are both.
    void sendToEditor(RationMode mode);
    /// Closes the library that is shown, if any, and remembers what the user was looking at.
    void clearLibrary();
    /// The column of units is laid out narrow; it grows when a unit would be cut off.
    void showUnitsWhole();

    QComboBox* m_cboDek;
    KeyedTree* m_tvRationContent;
    KeyedGrid* m_grdDEB;
    CommandBars* m_commandBars;
    FindBar* m_find = nullptr;
    ElidedLine* m_lblReceiver;

    RationReceiver* m_editor = nullptr;
    QString m_dekId;
    std::unique_ptr<Connection> m_library;
    std::unique_ptr<RationSearch> m_rations;  ///< those of m_library; null until they are needed
    QStringList m_openedByFind;               ///< keys of the nodes that were closed before a hit below them was shown
    QString m_shownLibrary;                   ///< id of the library that m_library is open on
    QHash<QString, Place> m_places;           ///< by library id
    bool m_loaded = false;
    bool m_wasShown = false;
    bool m_placedByUser = false;
    QRect m_placedHere;  ///< where it was put beside the receiving row; elsewhere it stands where the user wants it
};
