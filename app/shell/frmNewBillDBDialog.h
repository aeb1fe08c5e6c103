#pragma once

#include <QDialog>

class QLineEdit;

/// Asks for the name of a new library.
class frmNewBillDBDialog : public QDialog {
    Q_OBJECT

public:
    /// `mainWindow` owns the dialog and gives it its icon.
    explicit frmNewBillDBDialog(QWidget* mainWindow);

    /// The accepted file name with extension and without folder; empty when cancelled.
    QString NewFileName() const { return m_newFileName; }

private:
    void btnOK_Click();
    void btnCanel_Click();

    QLineEdit* m_txtFileName;
    QString m_newFileName;
};
