#include "app/shell/OpenLibraryDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTreeView>

#include "app/base/Definitions.h"
#include "app/base/Text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int sizeColumn = 1;
constexpr int typeColumn = 2;
constexpr int dateColumn = 3;

/// The toolkit names file types in the machine's language.
class ChineseFileTypes : public QFileIconProvider {
public:
    QString type(const QFileInfo& info) const override { return info.isDir() ? u"文件夹"_s : u"清单库文件"_s; }
};

/// The toolkit writes dates as the machine's language does.
class FileDates : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (const auto* files = qobject_cast<const QFileSystemModel*>(index.model()))
            option->text = files->lastModified(index).toString(u"yyyy-MM-dd HH:mm"_s);
    }
};

void layOutFileList(QTreeView* list) {
    list->setItemDelegateForColumn(dateColumn, new FileDates(list));
    QHeaderView* header = list->header();
    const QFontMetrics metrics = list->fontMetrics();
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    header->resizeSection(sizeColumn, metrics.horizontalAdvance(u"8888.88 KiB"_s) + 24);
    header->resizeSection(typeColumn, metrics.horizontalAdvance(u"清单库文件"_s) + 24);
    header->resizeSection(dateColumn, metrics.horizontalAdvance(u"2000-00-00 00:00"_s) + 24);
}

}  // namespace

QString askForLibrary(QWidget* owner) {
    QFileDialog dialog(owner, u"打开"_s, dataPath, u"清单库文件(*.bdb)"_s);
    dialog.setObjectName(u"CommonDialog"_s);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    ChineseFileTypes types;
    dialog.setIconProvider(&types);
    if (auto* list = dialog.findChild<QTreeView*>(u"treeView"_s))
        layOutFileList(list);
    const int digit = dialog.fontMetrics().horizontalAdvance(u'0');
    dialog.resize(digit * 110, digit * 64);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return trimBlanks(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}
