#pragma once

#include <QLabel>

/// The pane of the status bar: a line of text, and behind it a link for what the user can do about it. When both do
/// not fit, the text is left out in the middle; the link always stays whole.
class StatusLine : public QLabel {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent);

    /// Shows `text`, and `link` behind it when there is one.
    void showLine(const QString& text, const QString& link = QString());

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QString m_line;
    QString m_link;
};
