#include "app/shell/frmNewBillDBDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"

using namespace Qt::StringLiterals;

frmNewBillDBDialog::frmNewBillDBDialog(QWidget* mainWindow) : QDialog(mainWindow), m_txtFileName(new QLineEdit(this)) {
    setObjectName(u"frmNewBillDBDialog"_s);
    setWindowTitle(u"新建文件"_s);
    if (mainWindow)
        setWindowIcon(mainWindow->windowIcon());

    auto* label = new QLabel(u"请输入文件名："_s, this);
    label->setBuddy(m_txtFileName);
    m_txtFileName->setObjectName(u"txtFileName"_s);
    m_txtFileName->setMinimumWidth(m_txtFileName->fontMetrics().horizontalAdvance(u'0') * 44);

    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton(u"确定"_s, QDialogButtonBox::ActionRole);
    auto* cancel = buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole);
    ok->setObjectName(u"btnOK"_s);
    cancel->setObjectName(u"btnCanel"_s);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmNewBillDBDialog::btnOK_Click);
    connect(cancel, &QPushButton::clicked, this, &frmNewBillDBDialog::btnCanel_Click);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_txtFileName);
    layout->addSpacing(layout->spacing());
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_txtFileName->setFocus();
}

void frmNewBillDBDialog::btnOK_Click() {
    // Fixed form name of the record; don't correct.
    guarded({"frmNewRationDBDialog", "btnOK_Click"}, [this] {
        QString name = trimBlanks(m_txtFileName->text());
        const QString wrongInput = u"输入错误"_s;
        if (name.isEmpty()) {
            showMessage(u"输入文件名不能为空！"_s, wrongInput, MessageIcon::Information);
            m_txtFileName->setFocus();
            return;
        }
        const QString forbidden = u"\\/:*?\"<>|"_s;
        for (const QChar character : forbidden) {
            if (name.contains(character)) {
                showMessage(u"文件不能包含下列任何字符之一："_s + forbidden, wrongInput, MessageIcon::Information);
                m_txtFileName->setFocus();
                return;
            }
        }
        name += u".bdb"_s;
        if (fso().FileExists(dataPath + name) &&
            !askYesNo(u"存在相同的文件名，是否覆盖原来的文件？"_s, u"提示"_s, MessageIcon::Question)) {
            m_txtFileName->setFocus();
            return;
        }
        m_newFileName = name;
        accept();
    });
}

void frmNewBillDBDialog::btnCanel_Click() {
    m_newFileName.clear();
    reject();
}
