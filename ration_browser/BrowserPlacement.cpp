#include "ration_browser/BrowserPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "app/base/UserSettings.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int titleBarHeight = 30;
constexpr int frameWidth = 8;
constexpr int reachableWidth = 80;
/// Beyond the largest desktop; what lies outside is nonsense and would overflow.
constexpr int farthest = 100'000;

QSettings settingsStore() { return userSettings(u"frmDekBrowser"_s); }

QString nameOf(const char* key) { return u"Settings/"_s + QLatin1String(key); }

int remembered(const QSettings& settings, const char* key, int lowest, int current) {
    bool isNumber = false;
    const int value = settings.value(nameOf(key)).toInt(&isNumber);
    return isNumber ? std::clamp(value, lowest, farthest) : current;
}

/// The room for the content of a window whose frame must lie within `area`.
QRect withinFrame(const QRect& area) {
    return area.adjusted(frameWidth, titleBarHeight + frameWidth, -frameWidth, -frameWidth);
}

/// `window` moved by as little as it takes to lie in `room`.
QRect movedInto(QRect window, const QRect& room) {
    window.moveLeft(std::clamp(window.left(), room.left(), room.right() - window.width() + 1));
    window.moveTop(std::clamp(window.top(), room.top(), room.bottom() - window.height() + 1));
    return window;
}

}  // namespace

QRect broughtBack(QRect placement, const QList<QRect>& screens) {
    if (screens.isEmpty())
        return placement;
    QRect everything;
    for (const QRect& screen : screens)
        everything |= screen;
    placement.setSize(placement.size().boundedTo(everything.size()));
    const QRect titleBar(placement.left(), placement.top() - titleBarHeight, placement.width(), titleBarHeight);
    for (const QRect& screen : screens) {
        const QRect visible = screen & titleBar;
        if (visible.width() >= std::min(reachableWidth, placement.width()) && visible.height() == titleBarHeight)
            return placement;
    }
    const QRect room = withinFrame(screens.first());
    placement.setSize(placement.size().boundedTo(room.size()));
    placement.moveCenter(room.center());
    return placement;
}

QRect besideRow(const QRect& row, QSize wanted, QSize smallest, const QRect& screen) {
    const QRect kept = row.adjusted(0, -row.height(), 0, row.height());
    QRect best;
    for (const QRect& side : {QRect(screen.topLeft(), QPoint(screen.right(), kept.top() - 1)),
                              QRect(QPoint(screen.left(), kept.bottom() + 1), screen.bottomRight()),
                              QRect(screen.topLeft(), QPoint(kept.left() - 1, screen.bottom())),
                              QRect(QPoint(kept.right() + 1, screen.top()), screen.bottomRight())}) {
        const QRect room = withinFrame(side);
        const QSize size = wanted.boundedTo(room.size());
        if (size.boundedTo(smallest) != smallest || size.width() * size.height() <= best.width() * best.height())
            continue;
        best.setSize(size);
        best.moveCenter(row.center());
        best = movedInto(best, room);
    }
    return best;
}

bool restorePlacement(QWidget* window) {
    const QSettings settings = settingsStore();
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens << screen->availableGeometry();
    const QRect current = window->geometry();
    const QRect wanted(remembered(settings, "MainLeft", -farthest, current.x()),
                       remembered(settings, "MainTop", -farthest, current.y()),
                       remembered(settings, "MainWidth", window->minimumWidth(), current.width()),
                       remembered(settings, "MainHeight", window->minimumHeight(), current.height()));
    const QRect placement = broughtBack(wanted, screens);
    // A window that was never moved is put over its owner when it is shown.
    const bool hasPlace = settings.contains(nameOf("MainLeft")) || settings.contains(nameOf("MainTop"));
    if (hasPlace)
        window->setGeometry(placement);
    else
        window->resize(placement.size());
    return hasPlace && settings.value(nameOf("MainChosen"), true).toBool();
}

void savePlacement(const QWidget* window, bool chosenByUser) {
    const QRect placement = window->isMaximized() ? window->normalGeometry() : window->geometry();
    QSettings settings = settingsStore();
    settings.setValue(nameOf("MainLeft"), placement.x());
    settings.setValue(nameOf("MainTop"), placement.y());
    settings.setValue(nameOf("MainWidth"), placement.width());
    settings.setValue(nameOf("MainHeight"), placement.height());
    settings.setValue(nameOf("MainChosen"), chosenByUser);
}
