#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <functional>

class QToolButton;
struct ComboList;

/// The text editor of a grid cell, with a button at its end when `hasButton`.
class CellEdit : public QLineEdit {
    Q_OBJECT

public:
    /// The toolkit's own limit.
    static constexpr qsizetype longestText = 32767;

    CellEdit(QWidget* parent, bool hasButton);

    /// Lets no more than `limit` characters be typed or pasted. A text that is longer already stays whole until then.
    void setLimit(int limit);

    std::function<void()> buttonClicked;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* m_button = nullptr;
};

/// The drop-down list of a grid cell: shows the texts, stores the values.
class CellChoice : public QComboBox {
    Q_OBJECT

public:
    CellChoice(QWidget* parent, const ComboList& list, const QString& value);

    /// The stored value of the chosen entry; the cell's own value while none is chosen.
    QString value() const;
    void showPopup() override;
    void hidePopup() override;

    /// An entry was chosen.
    std::function<void()> chosen;
    /// The list was closed without a choice.
    std::function<void()> dismissed;

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString m_value;
    bool m_open = false;
};
