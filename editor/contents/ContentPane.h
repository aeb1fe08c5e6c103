#pragma once

#include <QWidget>

#include "app/controls/KeyedGrid.h"
#include "editor/common/LibraryView.h"

class LibraryDocument;
class QComboBox;

/// The work contents of a bill as an outline: contents (level 0), second-level contents (level 1) and rations (level
/// 2), filtered by profession.
///
/// Every edit is written to the library at once; a command changes the grid only after the library has changed. What
/// the grid alone knows is a ration row that was added but has no code yet, at most one, and a ration library that was
/// chosen but not used yet. Errors are recorded by the procedure that met them.
class ContentPane : public QWidget {
    Q_OBJECT

public:
    /// Shows the work contents of the current bill of `library`.
    explicit ContentPane(LibraryDocument& library, QWidget* parent = nullptr);

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
    /// Deletes what the current row shows, by its level: one of the three above.
    void deleteCurrentRow();

    /// Sets the ration `deh` of the ration library `dekID` onto the current row. False, after a message, when there is
    /// no such library or ration; True even when it could not be written.
    bool EditBillContDe(const QString& deh, const QString& dekID);

    /// Adds the ration below the current second-level content or ration; does nothing on any other row.
    void insertRation(const QString& deh, const QString& dekID);
    /// Sets the ration onto the current row when that is a ration's.
    void replaceRation(const QString& deh, const QString& dekID);

    /// The row that was added for a ration and has no code yet; addBlankRation() adds it, if its second-level content
    /// is there.
    BlankRation blankRation() const;
    void addBlankRation(const BlankRation& ration);

    /// The ration libraries to choose from, in drop-down form.
    void setDekComboList(const QString& list);

    /// Gives up the code that is being typed into a ration's row, if one is.
    void dropTypedCode();
    /// What the user has to do first in the current row; empty when there is nothing in the way.
    QString nextStep() const;

    /// Ends an open cell editor as Enter would. False when the edit was rejected and the editor stays open.
    bool commitPending();

Q_SIGNALS:
    /// A ration is to be chosen in a browser that shows the library `dekId`.
    void rationWanted(const QString& dekId);

private:
    void showCurrentBill();
    void setUpGrid();
    QString profession() const;

    // ContentEditing.cpp
    void grdConcent_RowColChange(int row, const QString& key);
    bool grdConcent_StartEdit(int row, const QString& key) const;
    EditVerdict grdConcent_ValidateEdit(int row, const QString& key, QString& text);
    EditVerdict validateText(int row, QString& text);
    void grdConcent_CellButtonClick(int row);
    enum class Setting { Refused, NotWritten, Written };
    Setting setRation(int row, const QString& deh, const QString& dekID);

    // ContentCommands.cpp
    void insertNode(int at, KeyedGrid::Cells cells, int level);
    void removeNode(int row);
    int rowBelowRations(int row) const;

    LibraryDocument& m_library;
    KeyedGrid* m_grdConcent;
    QComboBox* m_cboProfession;
    QString m_dekComboList;
};
