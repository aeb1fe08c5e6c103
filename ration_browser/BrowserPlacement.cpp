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

}  // namespace

QRect broughtBack(QRect placement, const QList<QRect>& screens) {
    if (screens.isEmpty())
        return placement;
    QRect everything;
    for (const QRect& screen : screens)
        everything |= screen;
    placement.setSize(placement.size().boundedTo(everything.size()));
    for (const QRect& screen : screens) {
        const QRect visible = screen & QRect(placement.topLeft(), QSize(placement.width(), titleBarHeight));
        if (visible.width() >= std::min(reachableWidth, placement.width()) && visible.height() == titleBarHeight)
            return placement;
    }
    // The frame goes round the content.
    const QRect room = screens.first().adjusted(frameWidth, frameWidth, -frameWidth, -titleBarHeight - frameWidth);
    placement.setSize(placement.size().boundedTo(room.size()));
    placement.moveCenter(room.center());
    return placement;
}

void restorePlacement(QWidget* window) {
    const QSettings settings = settingsStore();
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens << screen->availableGeometry();
    const QRect wanted(remembered(settings, "MainLeft", -farthest, window->x()),
                       remembered(settings, "MainTop", -farthest, window->y()),
                       remembered(settings, "MainWidth", window->minimumWidth(), window->width()),
                       remembered(settings, "MainHeight", window->minimumHeight(), window->height()));
    const QRect placement = broughtBack(wanted, screens);
    window->resize(placement.size());
    // A window that was never moved is put over its owner when it is shown.
    if (settings.contains(nameOf("MainLeft")) || settings.contains(nameOf("MainTop")))
        window->move(placement.topLeft());
}

void savePlacement(const QWidget* window) {
    const QRect placement = window->isMaximized() ? window->normalGeometry() : QRect(window->pos(), window->size());
    QSettings settings = settingsStore();
    settings.setValue(nameOf("MainLeft"), placement.x());
    settings.setValue(nameOf("MainTop"), placement.y());
    settings.setValue(nameOf("MainWidth"), placement.width());
    settings.setValue(nameOf("MainHeight"), placement.height());
}
