#pragma once

#include <QComboBox>
#include <QLineEdit>

class QToolButton;
struct ComboList;

/// The text editor of a grid cell, with a button at its end when `hasButton`.
///
/// A cell is one line: a line end or tab in a text that is set or pasted becomes one blank.
class CellEdit : public QLineEdit {
    Q_OBJECT

public:
    /// The toolkit's own limit.
    static constexpr qsizetype longestText = 32767;

    /// Takes at most `limit` characters (0 for no limit). A `text` that is longer already stays whole, but cannot grow.
    CellEdit(QWidget* parent, const QString& text, int limit, bool hasButton);

Q_SIGNALS:
    void buttonClicked();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* m_button = nullptr;
};

/// The drop-down list of a grid cell: shows the texts, stores the values. It is of use only while the list is open.
class CellChoice : public QComboBox {
    Q_OBJECT

public:
    CellChoice(QWidget* parent, const ComboList& list, const QString& value);

    /// Whether an entry was chosen; its stored value is currentData() then.
    bool isChosen() const { return m_chosen; }
    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    void chosen();
    /// The list was closed without a choice.
    void dismissed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_chosen = false;
};
