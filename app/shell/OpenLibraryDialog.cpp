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

namespace {

constexpr int sizeColumn = 1;
constexpr int typeColumn = 2;
constexpr int dateColumn = 3;

/// The toolkit names file types in the machine's language.
class ChineseFileTypes : public QFileIconProvider {
public:
    QString type(const QFileInfo& info) const override {
        return info.isDir() ? QStringLiteral("文件夹") : QStringLiteral("清单库文件");
    }
};

/// The toolkit writes dates as the machine's language does.
class FileDates : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (const auto* files = qobject_cast<const QFileSystemModel*>(index.model()))
            option->text = files->lastModified(index).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    }
};

void layOutFileList(QTreeView* list) {
    list->setItemDelegateForColumn(dateColumn, new FileDates(list));
    QHeaderView* header = list->header();
    const QFontMetrics metrics = list->fontMetrics();
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    header->resizeSection(sizeColumn, metrics.horizontalAdvance(QStringLiteral("8888.88 KiB")) + 24);
    header->resizeSection(typeColumn, metrics.horizontalAdvance(QStringLiteral("清单库文件")) + 24);
    header->resizeSection(dateColumn, metrics.horizontalAdvance(QStringLiteral("2000-00-00 00:00")) + 24);
}

}  // namespace

QString askForLibrary(QWidget* owner) {
    QFileDialog dialog(owner, QStringLiteral("打开"), dataPath, QStringLiteral("清单库文件(*.bdb)"));
    dialog.setObjectName(QStringLiteral("CommonDialog"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    ChineseFileTypes types;
    dialog.setIconProvider(&types);
    if (auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView")))
        layOutFileList(list);
    const int digit = dialog.fontMetrics().horizontalAdvance(QLatin1Char('0'));
    dialog.resize(digit * 110, digit * 64);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return trimBlanks(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}
