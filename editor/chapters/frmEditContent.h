#pragma once

#include <QDialog>

class QLineEdit;

/// Asks for a chapter's name.
///
/// The caller sets the caption and presets Content, shows the dialog modally and reads Content back: OK (or Enter)
/// leaves the text without surrounding blanks, Cancel (or Esc) an empty text, the close box the preset value.
class frmEditContent : public QDialog {
    Q_OBJECT
    Q_PROPERTY(QString Content READ Content WRITE setContent)
    Q_PROPERTY(QString ValiChars READ ValiChars WRITE setValiChars)

public:
    /// Shown over `mainWindow`, with its icon.
    explicit frmEditContent(QWidget* mainWindow);

    const QString& Content() const { return m_content; }
    /// Puts the text into the text box too, fully selected.
    void setContent(const QString& content);

    /// The characters that may be typed, letter case ignored; every character when empty.
    const QString& ValiChars() const { return m_valiChars; }
    void setValiChars(const QString& characters) { m_valiChars = characters; }

    /// Cancel: the button, and Esc.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdOK_Click();
    QString accepted(const QString& typed) const;

    QLineEdit* m_txtContent;
    QString m_content;
    QString m_valiChars;
};
