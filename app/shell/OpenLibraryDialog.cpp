#include "app/shell/OpenLibraryDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QTreeView>

#include "app/base/Definitions.h"
#include "app/base/Text.h"
#include "app/platform/Platform.h"

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

/// The toolkit writes sizes in English and dates as the machine's language does.
class SizesAndDates : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const auto* files = qobject_cast<const QFileSystemModel*>(index.model());
        if (files && index.column() == dateColumn)
            option->text = files->lastModified(index).toString(u"yyyy-MM-dd HH:mm"_s);
        else if (files && !files->isDir(index))
            option->text = sizeText(files->size(index));
    }

private:
    static QString sizeText(qint64 bytes) {
        if (bytes < 1024)
            return u"%1 字节"_s.arg(bytes);
        const double kilobytes = static_cast<double>(bytes) / 1024;
        return kilobytes < 1024 ? u"%1 KB"_s.arg(kilobytes, 0, 'f', 0) : u"%1 MB"_s.arg(kilobytes / 1024, 0, 'f', 1);
    }
};

/// Takes a typed name that is no file for one without blanks around, or without the extension, when there is one.
class LibraryDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    void accept() override {
        if (auto* name = findChild<QLineEdit*>(u"fileNameEdit"_s)) {
            const QString typed = name->text();
            const QString trimmed = trimBlanks(typed);
            for (const QString& wanted : {typed, trimmed, trimmed + u".bdb"_s}) {
                if (!trimmed.isEmpty() && directory().exists(wanted)) {
                    name->setText(wanted);
                    break;
                }
            }
        }
        QFileDialog::accept();
    }
};

void layOutFileList(QTreeView* list) {
    for (const int column : {sizeColumn, dateColumn})
        list->setItemDelegateForColumn(column, new SizesAndDates(list));
    QHeaderView* header = list->header();
    const QFontMetrics metrics = list->fontMetrics();
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    header->resizeSection(sizeColumn, metrics.horizontalAdvance(u"8888.8 MB"_s) + 24);
    header->resizeSection(typeColumn, metrics.horizontalAdvance(u"清单库文件"_s) + 24);
    header->resizeSection(dateColumn, metrics.horizontalAdvance(u"2000-00-00 00:00"_s) + 24);
}

}  // namespace

QString askForLibrary(QWidget* owner) {
    LibraryDialog dialog(owner, u"打开"_s, dataPath, u"清单库文件(*.bdb)"_s);
    dialog.setObjectName(u"CommonDialog"_s);
    dialog.setOption(QFileDialog::DontUseNativeDialog, !platform::hasFileDialog());
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
