#include "app/controls/UiHelpers.h"

#include <QEvent>
#include <QLineEdit>
#include <QToolBar>

#include "app/base/Guarded.h"
#include "app/controls/GridHeader.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/Style.h"

namespace {

/// Keeps the wheel from a box without the focus; what lies behind it scrolls instead.
class WheelFilter : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

}  // namespace

void SelectAllText(QLineEdit* txt) {
    guarded({"ModPublic", "SelectAllText"}, [&] {
        if (txt)
            txt->selectAll();
    });
}

void Grid_MergeFix(KeyedGrid* grid) {
    guarded({"ModPublic", "Grid_MergeFix"}, [&] { grid->setMergesHeader(true); });
}

void InitCommandbarsStyle(QToolBar* bar) {
    guarded({"ModPublic", "InitCommandbarsStyle"}, [&] {
        bar->setMovable(false);
        bar->setFloatable(false);
        bar->setContextMenuPolicy(Qt::PreventContextMenu);
        bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        bar->setIconSize({Theme::iconSize, Theme::iconSize});
    });
}

void SetVSFlexGridStyle(KeyedGrid* grid) {
    guarded({"ModPublic", "SetVSFlexGridStyle"}, [&] {
        grid->setSelectionBehavior(QAbstractItemView::SelectRows);
        grid->setSelectionMode(QAbstractItemView::ContiguousSelection);
        QPalette palette = grid->palette();
        palette.setColor(QPalette::Base, Theme::paper);
        palette.setColor(QPalette::AlternateBase, Theme::paper);
        grid->setPalette(palette);
        grid->setAlternatingRowColors(false);
    });
}

int ValiText(int keyCode, const QString& allowed, bool allowBackspace) {
    return guarded({"ModPublic", "ValiText"}, [&] {
        constexpr int backspace = 8;
        QString set = allowed.toUpper();
        if (allowBackspace)
            set += QChar(backspace);
        const bool passes = set.contains(QChar(static_cast<char16_t>(keyCode)).toUpper());
        return passes ? keyCode : 0;
    });
}

void turnByWheelOnlyWithFocus(QWidget* box) {
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(new WheelFilter(box));
}
