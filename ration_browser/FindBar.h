#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;

/// A slim bar in which is typed what to find, with the number of the hit that is shown.
class FindBar : public QWidget {
    Q_OBJECT

public:
    /// `previous` and `next` get a button each.
    FindBar(QAction* previous, QAction* next, QWidget* parent);

    QString text() const;
    /// Shows the bar and lets its text be typed over.
    void open();
    /// Shows the bar and goes on from `typed`.
    void openWith(const QString& typed);
    void setCount(const QString& count);

Q_SIGNALS:
    void textChanged(const QString& text);
    void nextWanted();
    void previousWanted();
    void closeWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* m_edit;
    QLabel* m_count;
};
