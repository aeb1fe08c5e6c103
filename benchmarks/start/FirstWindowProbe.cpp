#include <QCoreApplication>
#include <QEvent>
#include <QGenericPlugin>
#include <QTimer>
#include <QWidget>
#include <cstdio>

#include "benchmarks/start/PeakMemory.h"

namespace {

/// Prints the peak memory when the first window has been painted, and ends the program.
class FirstWindowProbe : public QObject {
public:
    FirstWindowProbe() { QCoreApplication::instance()->installEventFilter(this); }

private:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* widget = event->type() == QEvent::Paint ? qobject_cast<QWidget*>(watched) : nullptr;
        if (widget && widget->isWindow() && !m_seen) {
            m_seen = true;
            // By then the paint that has just begun is on the screen.
            QTimer::singleShot(0, this, [] {
                std::printf("%ld\n", peakMemory());
                std::fflush(stdout);
                QCoreApplication::quit();
            });
        }
        return false;
    }

    bool m_seen = false;
};

}  // namespace

/// Any Qt program loads it when QT_QPA_GENERIC_PLUGINS names it: the program itself stays as it is shipped.
class FirstWindowPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "FirstWindowProbe.json")

public:
    QObject* create(const QString& key, const QString&) override {
        return key == u"firstwindow"_s ? new FirstWindowProbe : nullptr;
    }
};

#include "FirstWindowProbe.moc"

using namespace Qt::StringLiterals;
