#include "tests/support/ModalAnswers.h"

#include "tests/support/Typing.h"

ModalAnswers::ModalAnswers() {
    otherwise([this](QWidget* window) {
        ADD_FAILURE() << "unforeseen: " << qPrintable(m_seen.last());
        window->close();
    });
    qApp->installEventFilter(this);
}

ModalAnswers::~ModalAnswers() {
    qApp->removeEventFilter(this);
    EXPECT_EQ(m_next, m_answers.size()) << "a dialog that was to be answered never came";
}

ModalAnswers& ModalAnswers::press(int button) {
    return then([button](QWidget* window) {
        auto* box = qobject_cast<QMessageBox*>(window);
        QAbstractButton* wanted = box ? box->button(static_cast<QMessageBox::StandardButton>(button)) : nullptr;
        EXPECT_TRUE(wanted) << "no such button";
        wanted ? QTest::mouseClick(wanted, Qt::LeftButton) : QTest::keyClick(window, Qt::Key_Escape);
    });
}

ModalAnswers& ModalAnswers::then(std::function<void(QWidget*)> act) {
    m_answers.push_back(std::move(act));
    return *this;
}

ModalAnswers& ModalAnswers::otherwise(std::function<void(QWidget*)> act) {
    m_otherwise = std::move(act);
    return *this;
}

QStringList ModalAnswers::takePlaces() {
    return takeRecords().replaceInStrings(QRegularExpression(u"^(\\w+\\.\\w*) -?\\d+$"_s), u"\\1"_s);
}

QStringList ModalAnswers::takeRecords() {
    static const QRegularExpression record(u"(?s)^.*错误位置: (\\S+)\\s+错误号码: (-?\\d+).*$"_s);
    return takeSeen().replaceInStrings(record, u"\\1 \\2"_s);
}

bool ModalAnswers::eventFilter(QObject* watched, QEvent* event) {
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (event->type() == QEvent::Show && dialog && dialog->isModal())
        QTimer::singleShot(0, this, [this, window = QPointer<QWidget>(dialog)] {
            if (window)
                answer(window);
        });
    return QObject::eventFilter(watched, event);
}

void ModalAnswers::answer(QWidget* window) {
    EXPECT_TRUE(makeActive(window));
    const QPointer<QWidget> owner = window->parentWidget() ? window->parentWidget()->window() : nullptr;
    const auto* box = qobject_cast<QMessageBox*>(window);
    m_seen << (box ? box->windowTitle() + u": "_s + box->text() : window->windowTitle());
    (m_next < m_answers.size() ? m_answers[m_next++] : m_otherwise)(window);
    // Without a window manager nobody else gives the focus back.
    if (owner && owner->isVisible())
        owner->activateWindow();
}
