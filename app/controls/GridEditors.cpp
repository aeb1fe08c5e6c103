#include "app/controls/GridEditors.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>

#include "app/controls/GridModel.h"
#include "app/controls/Marks.h"

using namespace Qt::StringLiterals;

namespace {

/// Looks as the delegate paints it in a cell that is not edited.
class CellButton : public QToolButton {
public:
    using QToolButton::QToolButton;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        Theme::drawButton(&painter, rect());
    }
};

}  // namespace

CellEdit::CellEdit(QWidget* parent, bool hasButton) : QLineEdit(parent) {
    setObjectName(u"cellEditor"_s);
    setFrame(false);
    setTextMargins(2, 0, 2, 0);
    if (!hasButton)
        return;
    m_button = new CellButton(this);
    m_button->setObjectName(u"cellButton"_s);
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->setCursor(Qt::ArrowCursor);
    connect(m_button, &QToolButton::clicked, this, [this] {
        if (buttonClicked)
            buttonClicked();
    });
}

void CellEdit::setLimit(int limit) {
    if (text().size() <= limit) {
        setMaxLength(limit);
        return;
    }
    connect(this, &QLineEdit::textEdited, this, [this, limit, before = text().size()](const QString& text) mutable {
        const bool shortened = text.size() < std::exchange(before, text.size());
        if (text.size() <= limit || !shortened)
            setMaxLength(limit);
    });
}

void CellEdit::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    if (!m_button)
        return;
    const int edge = height() - 2;
    m_button->setGeometry(width() - edge - 2, 1, edge + 2, edge);
    setTextMargins(0, 0, edge + 4, 0);
}

CellChoice::CellChoice(QWidget* parent, const ComboList& list, const QString& value)
    : QComboBox(parent), m_value(value) {
    setObjectName(u"cellEditor"_s);
    for (const auto& [stored, text] : list.items)
        addItem(Theme::oneLine(text), stored);
    setCurrentIndex(list.find(value));
    connect(this, &QComboBox::activated, this, [this] {
        m_open = false;
        if (chosen)
            chosen();
    });
}

QString CellChoice::value() const { return currentIndex() < 0 ? m_value : currentData().toString(); }

void CellChoice::showPopup() {
    m_open = true;
    QComboBox::showPopup();
}

void CellChoice::hidePopup() {
    QComboBox::hidePopup();
    // A choice is announced after the list has closed.
    QTimer::singleShot(0, this, [this] {
        if (m_open && dismissed) {
            m_open = false;
            dismissed();
        }
    });
}

void CellChoice::wheelEvent(QWheelEvent* event) { event->ignore(); }

void CellChoice::keyPressEvent(QKeyEvent* event) {
    // Stepping through a closed list would choose the first entry passed.
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        showPopup();
    else
        QComboBox::keyPressEvent(event);
}
