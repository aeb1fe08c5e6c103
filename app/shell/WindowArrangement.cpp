#include "app/shell/WindowArrangement.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>
#include <algorithm>

namespace {

constexpr int narrowestStrip = 220;

QList<QMdiSubWindow*> windowsToArrange(const QMdiArea* area) {
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* window : area->subWindowList()) {
        if (!window->isMinimized() && !window->isHidden())
            windows << window;
    }
    const qsizetype active = windows.indexOf(area->currentSubWindow());
    if (active > 0)
        windows.move(active, 0);
    return windows;
}

/// Gives a window the place `index` in a cascade: four fifths of the area, or what the window needs at least; the steps
/// use up the rest.
void placeInCascade(const QMdiArea* area, QMdiSubWindow* window, qsizetype index) {
    const QSize whole = area->viewport()->size();
    const QSize size = (whole * 4 / 5).expandedTo(window->minimumSizeHint());
    const int step = area->style()->pixelMetric(QStyle::PM_TitleBarHeight) + 4;
    const QSize rest = (whole - size).expandedTo(QSize(0, 0));
    const int offset = step * static_cast<int>(index % (1 + rest.height() / step));
    window->setGeometry(QRect(QPoint(std::min(offset, rest.width()), offset), size));
}

}  // namespace

void bringToFront(QMdiArea* area, QMdiSubWindow* window) {
    if (window->isMinimized())
        window->showNormal();
    area->setActiveSubWindow(window);
}

void placeSubWindow(QMdiArea* area, QMdiSubWindow* window) {
    placeInCascade(area, window, area->subWindowList().indexOf(window));
}

void cascadeSubWindows(QMdiArea* area) {
    QList<QMdiSubWindow*> windows = windowsToArrange(area);
    std::reverse(windows.begin(), windows.end());
    for (qsizetype i = 0; i < windows.size(); ++i) {
        windows[i]->showNormal();
        placeInCascade(area, windows[i], i);
        windows[i]->raise();
    }
    if (!windows.isEmpty())
        area->setActiveSubWindow(windows.last());
}

void tileSubWindows(QMdiArea* area, Qt::Orientation orientation) {
    const QList<QMdiSubWindow*> windows = windowsToArrange(area);
    if (windows.isEmpty())
        return;
    QMdiSubWindow* active = area->currentSubWindow();
    const bool stacked = orientation == Qt::Horizontal;
    const QSize size = area->viewport()->size();
    const int count = static_cast<int>(windows.size());
    const int room = std::max(1, (stacked ? size.height() : size.width()) / narrowestStrip);
    const int lanes = (count + room - 1) / room;

    int next = 0;
    for (int lane = 0; lane < lanes; ++lane) {
        const int inLane = (count - next + lanes - lane - 1) / (lanes - lane);
        for (int place = 0; place < inLane; ++place) {
            const auto share = [](int total, int index, int parts) { return total * index / parts; };
            const int along = stacked ? size.height() : size.width();
            const int across = stacked ? size.width() : size.height();
            const int from = share(along, place, inLane);
            const int to = share(along, place + 1, inLane);
            const int left = share(across, lane, lanes);
            const int right = share(across, lane + 1, lanes);
            QMdiSubWindow* window = windows[next++];
            window->showNormal();
            window->setGeometry(stacked ? QRect(left, from, right - left, to - from)
                                        : QRect(from, left, to - from, right - left));
        }
    }
    area->setActiveSubWindow(active);
}
