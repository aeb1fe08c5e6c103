#include "app/controls/GridEditors.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QTimer>
#include <QToolButton>
#include <QValidator>

#include "app/controls/GridModel.h"
#include "app/controls/Marks.h"

using namespace Qt::StringLiterals;

namespace {

/// Keeps a text in one line, and one longer than `limit` from growing. As a validator it sees whatever way a text comes
/// in, and what it refuses leaves the cursor and the undo history as they were.
class CellTextValidator : public QValidator {
public:
    CellTextValidator(QLineEdit* edit, qsizetype size, int limit)
        : QValidator(edit), m_edit(edit), m_size(size), m_limit(limit) {}

    State validate(QString& text, int& position) const override {
        position = static_cast<int>(Theme::inOneLine(text.left(position)).size());
        text = Theme::inOneLine(text);
        // What can be redone was just undone, and an undo may bring the long text back.
        const bool grows = text.size() > m_size && !m_edit->isRedoAvailable();
        if (m_limit > 0 && text.size() > m_limit && grows)
            return Invalid;
        m_size = text.size();
        return Acceptable;
    }

private:
    const QLineEdit* m_edit;
    mutable qsizetype m_size;
    int m_limit;
};

}  // namespace

CellEdit::CellEdit(QWidget* parent, const QString& text, int limit, bool hasButton) : QLineEdit(parent) {
    setObjectName(u"cellEditor"_s);
    setFrame(false);
    setTextMargins(2, 0, 2, 0);
    if (limit > 0)
        setMaxLength(static_cast<int>(qMax(qsizetype(limit), text.size())));
    setValidator(new CellTextValidator(this, text.size(), limit));
    setText(text);
    if (!hasButton)
        return;
    m_button = new QToolButton(this);
    m_button->setObjectName(u"cellButton"_s);
    m_button->setText(u"…"_s);
    m_button->setAccessibleName(u"浏览"_s);
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->setCursor(Qt::ArrowCursor);
    connect(m_button, &QToolButton::clicked, this, &CellEdit::buttonClicked);
}

void CellEdit::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    if (!m_button)
        return;
    const int edge = height() - 2;
    m_button->setGeometry(width() - edge - 2, 1, edge + 2, edge);
    setTextMargins(0, 0, edge + 4, 0);
}

CellChoice::CellChoice(QWidget* parent, const ComboList& list, const QString& value) : QComboBox(parent) {
    setObjectName(u"cellEditor"_s);
    for (const auto& [stored, text] : list.items)
        addItem(Theme::oneLine(text), stored);
    setCurrentIndex(list.find(value));
    view()->installEventFilter(this);
    connect(this, &QComboBox::activated, this, [this] {
        m_chosen = true;
        Q_EMIT chosen();
    });
}

void CellChoice::showPopup() {
    // With a value that is in no entry nothing is marked; the list would mark its first entry when it gets the focus.
    if (currentIndex() < 0)
        view()->setCurrentIndex({});
    QComboBox::showPopup();
}

void CellChoice::hidePopup() {
    QComboBox::hidePopup();
    // A choice is announced after the list has closed.
    QTimer::singleShot(0, this, [this] {
        if (!m_chosen)
            Q_EMIT dismissed();
    });
}

void CellChoice::keyPressEvent(QKeyEvent*) {
    // The base class would step through the closed list, and choose the first entry passed.
    showPopup();
}

bool CellChoice::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress;
    const int key = isKey ? static_cast<QKeyEvent*>(event)->key() : 0;
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !view()->currentIndex().isValid()) {
        hidePopup();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}
