#include "app/controls/CommandBars.h"

#include <QAction>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QToolBar>
#include <QToolButton>

#include "app/base/Guarded.h"
#include "app/base/UserEvent.h"
#include "app/controls/Style.h"
#include "app/controls/UiHelpers.h"

using namespace Qt::StringLiterals;

CommandBars::CommandBars(QWidget* window, const QString& name) : QObject(window), m_window(window) {
    setObjectName(name);
    connect(&UserEvent::instance(), &UserEvent::over, this, &CommandBars::update);
}

void CommandBars::addActions(std::vector<CommandAction> actions) {
    for (CommandAction& command : actions) {
        const int id = command.id;
        auto* made = new QAction(command.caption, this);
        made->setObjectName(u"%1.%2"_s.arg(objectName()).arg(id));
        made->setToolTip(command.tooltip);
        made->setStatusTip(command.description);
        made->setProperty("category", command.category);
        // A key held down must not write again and again.
        made->setAutoRepeat(false);
        connect(made, &QAction::triggered, this, [this, id] { execute(id); });
        m_commands.insert(id, {std::move(command), made});
    }
    update();
}

QAction* CommandBars::action(int id) const {
    const auto found = m_commands.constFind(id);
    return found == m_commands.constEnd() ? nullptr : found->action;
}

QToolBar* CommandBars::createToolBar(const QString& title, const std::vector<int>& ids) {
    auto* bar = new QToolBar(title, m_window);
    bar->setObjectName(title);
    InitCommandbarsStyle(bar);
    for (const int id : ids)
        if (QAction* command = action(id))
            AddButton(bar, command);
    return bar;
}

QLineEdit* CommandBars::addTextEntry(QToolBar* bar, int id, const QString& caption, int enterId) {
    auto* edit = new QLineEdit;
    auto* label = new QLabel(caption);
    label->setBuddy(edit);
    label->setContentsMargins(6, 0, 2, 0);
    edit->setObjectName(u"%1.%2"_s.arg(objectName()).arg(id));
    edit->setClearButtonEnabled(true);
    // It gives way before a button falls off a narrow bar.
    const int digit = edit->fontMetrics().horizontalAdvance(u'0');
    edit->setMinimumWidth(digit * 9);
    edit->setMaximumWidth(digit * 20);
    connect(edit, &QLineEdit::returnPressed, this, [this, enterId] { execute(enterId); });
    bar->addWidget(label);
    bar->addWidget(edit);
    return edit;
}

QMenu* CommandBars::createMenu(const QString& title, const std::vector<MenuEntry>& entries) {
    auto* menu = new QMenu(title, m_window);
    menu->setObjectName(title);
    for (const auto& [id, caption] : entries) {
        QAction* command = action(id);
        if (!command)
            continue;
        if (caption.isEmpty() || caption == command->text()) {
            menu->addAction(command);
            continue;
        }
        auto* alias = new QAction(command->icon(), caption, menu);
        alias->setObjectName(u"%1.%2.%3"_s.arg(objectName(), title).arg(id));
        alias->setStatusTip(command->statusTip());
        connect(alias, &QAction::triggered, this, [this, id = id] { execute(id); });
        menu->addAction(alias);
        m_aliases.emplace_back(id, alias);
    }
    connect(menu, &QMenu::aboutToShow, this, &CommandBars::update);
    return menu;
}

void CommandBars::addShortcut(const QKeySequence& keys, int id) {
    if (QAction* command = action(id)) {
        command->setShortcuts(command->shortcuts() << keys);
        m_window->addAction(command);
    }
}

void CommandBars::loadIcons(const QString& stripPath, const std::vector<int>& ids) {
    const std::vector<QIcon> icons = iconsFromStrip(stripPath);
    for (std::size_t i = 0; i < qMin(icons.size(), ids.size()); ++i)
        if (QAction* command = action(ids[i]))
            command->setIcon(icons[i]);
    for (const auto& [id, alias] : m_aliases)
        if (alias)
            alias->setIcon(action(id)->icon());
}

bool CommandBars::isEnabled(int id) const {
    const auto found = m_commands.constFind(id);
    return found != m_commands.constEnd() && (!found->what.enabled || found->what.enabled());
}

void CommandBars::execute(int id) {
    const QPointer<CommandBars> self = this;
    if (!m_commands.contains(id) || (beforeExecute && !beforeExecute()) || !self)
        return;
    if (!isEnabled(id)) {
        update();
        return;
    }
    // A copy: the command may close the window that owns the table.
    const auto run = m_commands.value(id).what.execute;
    if (run)
        run();
    else
        Q_EMIT unhandled(id);
}

void CommandBars::update() {
    for (const Command& command : std::as_const(m_commands))
        command.action->setEnabled(!command.what.enabled || command.what.enabled());
    for (const auto& [id, alias] : m_aliases)
        if (alias)
            alias->setEnabled(action(id)->isEnabled());
}

QToolButton* AddButton(QToolBar* controls, QAction* command, bool beginGroup, Qt::ToolButtonStyle style) {
    return guarded({"modMain", "AddButton"}, [&] {
        if (beginGroup && !controls->actions().isEmpty())
            controls->addSeparator();
        controls->addAction(command);
        auto* button = qobject_cast<QToolButton*>(controls->widgetForAction(command));
        button->setToolButtonStyle(style);
        return button;
    });
}

namespace {

/// The images of one strip; each is as wide as the strip is high.
std::vector<QPixmap> cutStrip(const QString& path) {
    const QImage strip(path);
    std::vector<QPixmap> images;
    const int edge = strip.height();
    for (int left = 0; edge > 0 && left + edge <= strip.width(); left += edge)
        images.push_back(QPixmap::fromImage(strip.copy(left, 0, edge, edge)));
    return images;
}

}  // namespace

std::vector<QIcon> iconsFromStrip(const QString& stripPath) {
    const QFileInfo file(stripPath);
    const std::vector<QPixmap> ordinary = cutStrip(stripPath);
    std::vector<QPixmap> dense = cutStrip(u"%1/%2@2x.%3"_s.arg(file.path(), file.completeBaseName(), file.suffix()));
    std::vector<QIcon> icons;
    for (std::size_t i = 0; i < ordinary.size(); ++i) {
        QIcon icon(ordinary[i]);
        if (i < dense.size()) {
            dense[i].setDevicePixelRatio(2);
            icon.addPixmap(dense[i]);
        }
        icons.push_back(icon);
    }
    return icons;
}
