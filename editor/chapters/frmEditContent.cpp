#include "editor/chapters/frmEditContent.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"
#include "app/controls/UiHelpers.h"

using namespace Qt::StringLiterals;

frmEditContent::frmEditContent(QWidget* mainWindow) : QDialog(mainWindow), m_txtContent(new QLineEdit(this)) {
    setObjectName(u"frmEditContent"_s);
    setWindowTitle(u"添加目录"_s);
    setWindowIcon(mainWindow->windowIcon());
    // Tahoma has no Chinese characters; those come from the family that all windows use.
    QFont tahoma = font();
    tahoma.setFamilies(QStringList{u"Tahoma"_s} + font().families());
    setFont(tahoma);

    auto* lblTitle = new QLabel(u"请输入目录名称："_s, this);
    lblTitle->setObjectName(u"lblTitle"_s);
    lblTitle->setBuddy(m_txtContent);
    m_txtContent->setObjectName(u"txtContent"_s);
    m_txtContent->setMinimumWidth(fontMetrics().horizontalAdvance(u"目录"_s) * 12);
    m_txtContent->installEventFilter(this);

    auto* cmdOK = new QPushButton(u"确定"_s, this);
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmEditContent::cmdOK_Click);
    auto* cmdCancel = new QPushButton(u"取消"_s, this);
    cmdCancel->setObjectName(u"cmdCancel"_s);
    connect(cmdCancel, &QPushButton::clicked, this, &frmEditContent::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblTitle);
    layout->addWidget(m_txtContent);
    layout->addSpacing(layout->spacing());
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_txtContent->setFocus();
}

void frmEditContent::setContent(const QString& content) {
    m_content = content;
    m_txtContent->setText(content);
    SelectAllText(m_txtContent);
}

void frmEditContent::cmdOK_Click() {
    guarded({"frmEditContent", "cmdOK_Click"}, [this] {
        const QString name = trimBlanks(wholeCharacters(m_txtContent->text()));
        if (name.isEmpty()) {
            showMessage(u"目录名不能不空！"_s, u"提示"_s, MessageIcon::Information);
            m_txtContent->setFocus();
            return;
        }
        m_content = name;
        accept();
    });
}

void frmEditContent::reject() {
    m_content.clear();
    QDialog::reject();
}

void frmEditContent::closeEvent(QCloseEvent* event) {
    // The default would call reject(), which empties Content as Cancel does; the close box leaves it.
    done(Rejected);
    event->accept();
}

bool frmEditContent::eventFilter(QObject* watched, QEvent* event) {
    if (!m_valiChars.isEmpty() && event->type() == QEvent::KeyPress) {
        const QString typed = static_cast<QKeyEvent*>(event)->text();
        if (!typed.isEmpty() && typed[0].isPrint() && accepted(typed).isEmpty())
            return true;
    }
    if (!m_valiChars.isEmpty() && event->type() == QEvent::InputMethod) {
        auto* composed = static_cast<QInputMethodEvent*>(event);
        composed->setCommitString(accepted(composed->commitString()), composed->replacementStart(),
                                  composed->replacementLength());
    }
    return QDialog::eventFilter(watched, event);
}

QString frmEditContent::accepted(const QString& typed) const {
    QString characters;
    for (const QChar c : typed) {
        if (ValiText(c.unicode(), m_valiChars, true) != 0)
            characters += c;
    }
    return characters;
}
