// What the lists say while they are empty.

#include <QComboBox>

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

namespace {
const QString billIsGone = u"这条清单已经删除"_s;
}

QString frmEditor::hintForBills() const {
    const Listing& listing = m_library->listing();
    if (listing.failed)
        return u"清单没有读出，请重新选中目录"_s;
    switch (listing.of) {
        case Listing::Of::Chapter:
            return u"这个目录还没有清单，可用“添加清单”添加"_s;
        case Listing::Of::Query:
            return u"没有符合条件的清单"_s;
        case Listing::Of::Nothing:
            break;
    }
    return m_chapters->tvSYB()->firstNode() ? u"选中六位编号的目录，即可列出清单"_s
                                            : u"先用“添加目录”“添加子目录”建立三级目录，清单放在第三级目录下"_s;
}

/// For a list that belongs to the bill shown: `empty` says that there is nothing in it.
QString frmEditor::hintForDetails(const QString& what, const QString& empty) const {
    if (m_library->isShownBillGone())
        return billIsGone;
    if (m_library->currentBill())
        return empty + u"，可点右键添加"_s;
    return m_library->shownBill().id == 0 ? u"选中一条清单，即可列出它的"_s + what : empty;
}

QString frmEditor::hintForValues() const {
    const KeyedGrid* features = m_features->grdSpec();
    if (m_library->isShownBillGone())
        return billIsGone;
    if (!features->hasRows())
        return u"选中一个项目特征，即可列出它的特征值"_s;
    return isEnumeration(features->row()) ? u"没有特征值，可点右键添加"_s : u"类型为“枚举”才能添加特征值"_s;
}

void frmEditor::showEmptyHints() {
    m_bills->grdBillList()->setEmptyHint(hintForBills());
    m_contents->grdConcent()->setEmptyHint(
        hintForDetails(u"工作内容"_s, u"“%1”专业下没有工作内容"_s.arg(m_contents->cboProfession()->currentText())));
    m_features->grdSpec()->setEmptyHint(hintForDetails(u"项目特征"_s, u"没有项目特征"_s));
    m_features->grdSpecEnum()->setEmptyHint(hintForValues());
}
