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

frmNewBillDBDialog::frmNewBillDBDialog(QWidget* mainWindow) : QDialog(mainWindow), txtFileName(new QLineEdit(this)) {
    setObjectName(QStringLiteral("frmNewBillDBDialog"));
    setWindowTitle(QStringLiteral("新建文件"));
    if (mainWindow)
        setWindowIcon(mainWindow->windowIcon());

    auto* label = new QLabel(QStringLiteral("请输入文件名："), this);
    label->setBuddy(txtFileName);
    txtFileName->setObjectName(QStringLiteral("txtFileName"));
    txtFileName->setMinimumWidth(txtFileName->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 44);

    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton(QStringLiteral("确定"), QDialogButtonBox::ActionRole);
    auto* cancel = buttons->addButton(QStringLiteral("取消"), QDialogButtonBox::RejectRole);
    ok->setObjectName(QStringLiteral("btnOK"));
    cancel->setObjectName(QStringLiteral("btnCanel"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmNewBillDBDialog::btnOK_Click);
    connect(cancel, &QPushButton::clicked, this, &frmNewBillDBDialog::btnCanel_Click);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(txtFileName);
    layout->addSpacing(layout->spacing());
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    txtFileName->setFocus();
}

void frmNewBillDBDialog::btnOK_Click() {
    // The form name in the record is the one that this dialog has always reported.
    guarded({"frmNewRationDBDialog", "btnOK_Click"}, [this] {
        QString name = trimBlanks(txtFileName->text());
        const QString wrongInput = QStringLiteral("输入错误");
        if (name.isEmpty()) {
            showMessage(QStringLiteral("输入文件名不能为空！"), wrongInput, MessageIcon::Information);
            txtFileName->setFocus();
            return;
        }
        const QString forbidden = QStringLiteral("\\/:*?\"<>|");
        for (const QChar character : forbidden) {
            if (name.contains(character)) {
                showMessage(QStringLiteral("文件不能包含下列任何字符之一：") + forbidden, wrongInput,
                            MessageIcon::Information);
                txtFileName->setFocus();
                return;
            }
        }
        name += QLatin1String(".bdb");
        if (fso().FileExists(dataPath + name) &&
            !askYesNo(QStringLiteral("存在相同的文件名，是否覆盖原来的文件？"), QStringLiteral("提示"))) {
            txtFileName->setFocus();
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
