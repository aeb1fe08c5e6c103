#pragma once

#include <QObject>
#include <QObjectList>

/// Keeps Enter and Space from doing the same again and again while they are held down on some widgets.
///
/// The toolkit's own mark of a repeated key is not enough: X11 sends a repeat as a release and a press of the same
/// moment, and the toolkit marks it only when both have arrived by the time it looks.
class HeldKeys : public QObject {
public:
    /// Lets `widgets` hear the first press only. `parent` owns this and outlives none of them.
    HeldKeys(QObject* parent, QObjectList widgets);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QObjectList m_widgets;
    int m_releasedKey = 0;
    quint64 m_releasedAt = 0;
};
