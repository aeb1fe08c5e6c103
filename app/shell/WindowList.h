#pragma once

#include <QObject>

class QAction;
class QMdiArea;
class QMenu;

/// Shows the open child windows in menus, in place of one entry that stands for them.
class WindowList : public QObject {
    Q_OBJECT

public:
    explicit WindowList(QMdiArea* windows);

    /// Whenever `menu` is about to show: in place of its entry captioned `placeholder`, when it has one, the child
    /// windows are listed, numbered, the active one checked. Without child windows the entry itself stays.
    void serve(QMenu* menu, const QString& placeholder);

private:
    void fill(QMenu* menu, QAction* placeholder) const;

    QMdiArea* m_windows;
};
