#pragma once

#include <QWidget>
#include <functional>

#include "app/controls/KeyedGrid.h"

class Connection;
class QComboBox;

/// The bill whose work is edited; id 0 when no bill is current.
struct CurrentBill {
    qint64 id = 0;
    QString code;
};

/// The work contents of a bill as an outline: contents (level 0), second-level contents (level 1) and rations (level
/// 2), filtered by profession.
///
/// Every edit is written to the library at once; a command changes the grid only after the library has changed. What
/// the grid alone knows is a ration row that was added but has no code yet, at most one, and a ration library that was
/// chosen but not used yet. Errors are recorded by the procedure that met them.
class ContentPane : public QWidget {
    Q_OBJECT

public:
    explicit ContentPane(QWidget* parent = nullptr);

    /// The library to work on, owned by the caller; null when it could not be opened.
    void setConnection(Connection* ormConn) { m_ormConn = ormConn; }

    /// Columns: cont, Unit, dekName and, hidden, contID, contDeID, contNum, subNum, contType.
    KeyedGrid* grdConcent() const { return m_grdConcent; }
    /// The professions; the entries' data are the numbers 1 to 9.
    QComboBox* cboProfession() const { return m_cboProfession; }

    /// Shows the contents of the bill `billID` that belong to the chosen profession.
    void LoadBillContent(qint64 billID);
    /// Shows the current bill's contents for the profession just chosen, or none when no bill is current.
    void cboProfession_Click();

    void munAddBillCont_Click();
    void munAddBillSubCont_Click();
    void munAddBillContDe_Click();
    void mnuDelBillCont_Click();
    void munDelBillSubCont_Click();
    void munDelBillContDe_Click();

    /// Sets the ration `deh` of the ration library `dekID` onto the current row. False, after a message, when there is
    /// no such library or ration; True even when it could not be written.
    bool EditBillContDe(const QString& deh, const QString& dekID);

    /// The ration browser's way in: mode 0 inserts the ration below the current second-level content, 1 replaces the
    /// current ration; anything that does not fit the current row does nothing.
    void WinCommand(short mode, const QString& deh, const QString& dekID);

    /// Id of the library's default ration library; empty when it has none.
    QString DekID;

    /// The ration libraries to choose from, in drop-down form.
    void setDekComboList(const QString& list);

    /// Tells the current bill.
    std::function<CurrentBill()> currentBill;
    /// A ration is to be chosen in a browser that shows the library `dekId`.
    std::function<void(const QString& dekId)> ellipsisClicked;

    /// Ends an open cell editor as Enter would. False when the edit was rejected and the editor stays open.
    bool commitPending();

    /// Id of the bill whose contents are shown; it may be gone.
    qint64 shownBill() const { return m_shownBill; }
    /// A locked pane takes neither edits nor commands: its bill no longer exists. Loading a bill unlocks it.
    void setLocked(bool locked);
    bool isLocked() const { return m_locked; }

private:
    void setUpGrid();
    QString profession() const;
    CurrentBill bill() const { return currentBill ? currentBill() : CurrentBill(); }
    bool ready();

    // ContentEditing.cpp
    void grdConcent_RowColChange(int row, const QString& key);
    bool grdConcent_StartEdit(int row, const QString& key) const;
    EditVerdict grdConcent_ValidateEdit(int row, const QString& key, QString& text);
    EditVerdict validateText(int row, QString& text);
    void grdConcent_CellButtonClick(int row);
    bool setRation(int row, const QString& deh, const QString& dekID);

    // ContentCommands.cpp
    void insertNode(int at, KeyedGrid::Cells cells, int level);
    void removeNode(int row);
    int rowBelowRations(int row) const;

    Connection* m_ormConn = nullptr;
    KeyedGrid* m_grdConcent;
    QComboBox* m_cboProfession;
    QString m_dekComboList;
    /// Text of the cell editor while its edit is validated.
    QString m_editText;
    qint64 m_shownBill = 0;
    bool m_locked = false;
};
