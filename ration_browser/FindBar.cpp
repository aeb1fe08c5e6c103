#include "ration_browser/FindBar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
constexpr int longestSearch = 200;
constexpr int widest = 360;
constexpr int buttonEdge = 26;
}  // namespace

FindBar::FindBar(QAction* previous, QAction* next, QWidget* parent)
    : QWidget(parent), m_edit(new QLineEdit(this)), m_count(new QLabel(this)) {
    auto* caption = new QLabel(u"查找："_s, this);
    caption->setBuddy(m_edit);
    m_edit->setObjectName(u"txtFind"_s);
    m_edit->setPlaceholderText(u"定额号、名称或拼音首字母，空格隔开几个词"_s);
    m_edit->setMaxLength(longestSearch);
    m_edit->setMaximumWidth(widest);
    m_edit->installEventFilter(this);
    m_count->setObjectName(u"lblFound"_s);
    m_count->setMinimumWidth(m_count->fontMetrics().horizontalAdvance(u"00000 / 00000"_s));
    connect(m_edit, &QLineEdit::textChanged, this, &FindBar::textChanged);

    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(4);
    all->addWidget(caption);
    all->addWidget(m_edit, 3);
    const auto addButton = [&](Qt::ArrowType arrow) {
        auto* button = new QToolButton(this);
        button->setArrowType(arrow);
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        button->setFocusPolicy(Qt::TabFocus);
        button->setFixedSize(buttonEdge, buttonEdge);
        all->addWidget(button);
        return button;
    };
    addButton(Qt::UpArrow)->setDefaultAction(previous);
    addButton(Qt::DownArrow)->setDefaultAction(next);
    all->addSpacing(4);
    all->addWidget(m_count);
    all->addStretch(1);
    QToolButton* close = addButton(Qt::NoArrow);
    close->setText(u"×"_s);
    close->setToolButtonStyle(Qt::ToolButtonTextOnly);
    close->setAutoRaise(true);
    close->setToolTip(u"关闭查找 (Esc)"_s);
    close->setAccessibleName(u"关闭查找"_s);
    connect(close, &QToolButton::clicked, this, &FindBar::closeWanted);
}

QString FindBar::text() const { return m_edit->text(); }

void FindBar::open() {
    show();
    m_edit->setFocus();
    m_edit->selectAll();
}

void FindBar::openWith(const QString& typed) {
    open();
    m_edit->setText(typed);
}

void FindBar::setCount(const QString& count) { m_count->setText(count); }

void FindBar::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && m_edit->hasFocus())
        event->modifiers() & Qt::ShiftModifier ? Q_EMIT previousWanted() : Q_EMIT nextWanted();
    else
        QWidget::keyPressEvent(event);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    // Taking back what was typed here must never take back what was written.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() & Qt::ControlModifier && (key->key() == Qt::Key_Z || key->key() == Qt::Key_Y)) {
            event->accept();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
