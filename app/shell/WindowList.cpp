#include "app/shell/WindowList.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "app/shell/WindowArrangement.h"

using namespace Qt::StringLiterals;

namespace {
constexpr char entryMark[] = "windowListEntry";
}

WindowList::WindowList(QMdiArea* windows) : QObject(windows), m_windows(windows) {}

void WindowList::serve(QMenu* menu, const QString& placeholder) {
    for (QAction* entry : menu->actions()) {
        if (entry->text() == placeholder)
            connect(menu, &QMenu::aboutToShow, this, [this, menu, entry] { fill(menu, entry); });
    }
}

void WindowList::fill(QMenu* menu, QAction* placeholder) const {
    for (QAction* entry : menu->actions()) {
        if (entry->property(entryMark).toBool())
            delete entry;
    }
    const QList<QMdiSubWindow*> windows = m_windows->subWindowList();
    placeholder->setVisible(windows.isEmpty());
    for (qsizetype i = 0; i < windows.size(); ++i) {
        QMdiSubWindow* window = windows[i];
        QString name = window->widget() ? window->widget()->windowTitle() : window->windowTitle();
        name.replace(u'&', u"&&"_s);
        auto* entry = new QAction((i < 9 ? u"&%1 %2"_s : u"%1 %2"_s).arg(i + 1).arg(name), menu);
        entry->setProperty(entryMark, true);
        entry->setCheckable(true);
        entry->setChecked(window == m_windows->currentSubWindow());
        connect(entry, &QAction::triggered, window, [this, window] { bringToFront(m_windows, window); });
        menu->insertAction(placeholder, entry);
    }
}
