#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/controls/KeyedGrid.h"
#include "editor/bills/BillData.h"

class BillTextBox;
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
    explicit BillPane(QWidget* parent = nullptr);
    ~BillPane() override;

    /// The library to work on, owned by the caller; null when it could not be opened.
    void setConnection(Connection* ormConn) { m_ormConn = ormConn; }

    KeyedGrid* grdBillList() const { return m_grdBillList; }
    QPlainTextEdit* txtRule() const;
    QPlainTextEdit* txtContent() const;

    /// Lays the toolbar out above the list.
    void addToolBar(QToolBar* bar);

    /// Lists the bills of a chapter. After a recorded error the list is as it was.
    void LoadBill(const QString& chapterCode);
    /// Lists the rows of tblBill that `rows` holds and makes the first current; does nothing when there are none to ask
    /// (null). The details of the bill that was current before are replaced, also by an empty list.
    void ListBillData(Recordset* rows);
    /// Empties the list without touching the details; the text boxes are emptied and locked.
    void clearList();

    /// Ends an open cell editor as an edit and writes changed text boxes. False when an editor stays open.
    bool commitPending();

    void mnuAddBill_Click();
    void mnuDeleteBill_Click();
    void mnuQueryBill_Click();
    /// Moves the current bill one place up or down.
    void MoveBillRow(bool up);

    /// Code of the selected chapter, empty when none is.
    std::function<QString()> selectedChapter;
    std::function<void()> deselectChapter;
    /// What to search for.
    std::function<QString()> queryText;
    /// Another bill is current (0: none); its details are to be shown.
    std::function<void(qint64 billId)> billChanged;
    /// A list without bills is shown.
    std::function<void()> listEmptied;

private:
    void showFirstBill();
    void grdBillList_AfterRowColChange(int newRow);

    // BillEditing.cpp
    void enableEditing();
    EditVerdict grdBillList_ValidateEdit(int row, const QString& key, QString& text);
    void txtRule_Validate();
    void txtContent_Validate();
    void writeBox(BillTextBox& box, const QString& field, const QString& key);

    // BillCommands.cpp
    std::vector<BillCode> shiftedCodes(int firstRow, bool forward) const;
    void showCodes(int firstRow, const std::vector<BillCode>& bills);
    qint64 billId(int row) const;

    Connection* m_ormConn = nullptr;
    QVBoxLayout* m_layout;
    KeyedGrid* m_grdBillList;
    QPointer<BillTextBox> m_txtRule;
    QPointer<BillTextBox> m_txtContent;
};
