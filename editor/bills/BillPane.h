#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/controls/KeyedGrid.h"
#include "editor/bills/BillColumns.h"
#include "editor/bills/BillData.h"

class BillTextBox;
class LibraryDocument;
class QPlainTextEdit;
class QToolBar;
class QVBoxLayout;

/// The bills of a chapter, or those that a query found, and the commands that change them.
///
/// The current row is the current bill; its calculation rule and its content text are edited in two text boxes, which
/// the owner lays out. Edits and commands write to the library first and change the list only after that succeeded.
class BillPane : public QWidget {
    Q_OBJECT

public:
    /// Lists what `library` says is to be listed, and tells it which bill is current.
    explicit BillPane(LibraryDocument& library, QWidget* parent = nullptr);
    ~BillPane() override;

    KeyedGrid* grdBillList() const { return m_grdBillList; }
    QPlainTextEdit* txtRule() const;
    QPlainTextEdit* txtContent() const;

    /// Lays the toolbar out above the list.
    void addToolBar(QToolBar* bar);

    /// Lists the bills of a chapter. After a recorded error the list is empty.
    void LoadBill(const QString& chapterCode);
    /// Lists the rows of tblBill that `rows` holds and makes the first current. The details of the bill that was
    /// current before are replaced, also by an empty list. After a recorded error the list is empty.
    void ListBillData(Recordset& rows);
    /// Empties the list without touching the details; the text boxes are emptied and locked.
    void clearList();

    /// Ends an open cell editor as an edit and writes changed text boxes. False when an editor stays open.
    bool commitPending();

    /// Writes changed text boxes.
    void commitTexts();
    /// See BillTextBox.
    void setBoxesLeftByProgram(bool on);
    void setBeforeBoxesWrite(const std::function<bool()>& act);

    void mnuAddBill_Click();
    void mnuDeleteBill_Click();
    /// Lists the bills whose codes contain `text`.
    void mnuQueryBill_Click(const QString& text);
    /// Moves the current bill one place up or down.
    void MoveBillRow(bool up);

private:
    void showListing();
    void listQuery(const QString& text);
    /// Lists what `query` finds; errors are recorded under the name of `procedure`.
    void list(const char* procedure, const std::function<Recordset()>& query);
    void listingFailed();
    void showFirstBill();
    void grdBillList_AfterRowColChange(int newRow);

    QString cell(int row, const BillColumn& column) const;
    void setCell(int row, const BillColumn& column, const QString& text);
    Bill bill(int row) const;
    static void appendBill(KeyedGrid::Batch& bills, const Recordset& rows);

    // BillEditing.cpp
    void enableEditing();
    EditVerdict grdBillList_ValidateEdit(int row, const QString& key, QString& text);
    void txtRule_Validate();
    void txtContent_Validate();
    void writeBox(BillTextBox& box, const BillColumn& column);

    // BillCommands.cpp
    std::vector<Bill> steppedCodes(int firstRow, bool forward) const;
    void showCodes(int firstRow, const std::vector<Bill>& bills);

    LibraryDocument& m_library;
    QVBoxLayout* m_layout;
    KeyedGrid* m_grdBillList;
    QPointer<BillTextBox> m_txtRule;
    QPointer<BillTextBox> m_txtContent;
};
