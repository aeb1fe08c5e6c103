#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

class QAction;
class QKeySequence;
class QLineEdit;
class QMenu;
class QToolBar;
class QToolButton;
class QWidget;

/// One command of a host. A command is data: what it is called, what it does and when it is enabled stand in one row.
struct CommandAction {
    int id;
    QString caption;
    QString tooltip;
    QString description;
    QString category;
    std::function<void()> execute = {};
    /// Always enabled when empty.
    std::function<bool()> enabled = {};
};

/// An entry of a menu: the command's own caption is used when `caption` is empty.
struct MenuEntry {
    int id;
    QString caption = {};
};

/// A command-bar host: actions known by numeric id, and the toolbars, menus and shortcuts that refer to them.
///
/// The enabled rules are evaluated before anything is shown or run, and again when a user's event is over. Running an
/// id that has no action, does nothing or is disabled does nothing.
class CommandBars : public QObject {
    Q_OBJECT

public:
    /// `window` owns the host and everything built by it; `name` becomes the object name.
    CommandBars(QWidget* window, const QString& name);

    void addActions(std::vector<CommandAction> actions);
    /// The toolkit's action of a command, or null. Its objectName is "<host name>.<id>".
    QAction* action(int id) const;

    /// A toolbar titled `title` with the commands in order. The caller lays it out.
    QToolBar* createToolBar(const QString& title, const std::vector<int>& ids);
    /// Puts a text box with a caption before it at the end of a toolbar; Enter in it runs `enterId`.
    QLineEdit* addTextEntry(QToolBar* bar, int id, const QString& caption, int enterId);
    /// A menu (drop-down or context menu) with the entries in order.
    QMenu* createMenu(const QString& title, const std::vector<MenuEntry>& entries);
    void addShortcut(const QKeySequence& keys, int id);

    /// Binds the images of the icon strip, by position, to commands; id 0 leaves an image unused. `stripPath` names
    /// the strip; a second strip "<name>@2x.bmp" beside it serves high pixel densities. A missing strip leaves the
    /// commands without icons.
    void loadIcons(const QString& stripPath, const std::vector<int>& ids);

    /// Evaluates the enabled rule of one command now.
    bool isEnabled(int id) const;
    /// Runs a command as its button would.
    void execute(int id);
    /// Evaluates all enabled rules and shows the result.
    void update();

    /// Runs before every command, also one that turns out to be disabled afterwards; false stops the command. Text
    /// still being typed is committed here.
    std::function<bool()> beforeExecute;

Q_SIGNALS:
    /// A command was asked for that has no `execute` of its own.
    void unhandled(int id);

private:
    struct Command {
        CommandAction what;
        QAction* action;
    };

    QWidget* m_window;
    QHash<int, Command> m_commands;
    /// Menu entries that show a command under another caption.
    std::vector<std::pair<int, QPointer<QAction>>> m_aliases;
};

/// Puts one command on a toolbar, after a separator when `beginGroup`, and gives its button.
QToolButton* AddButton(QToolBar* controls, QAction* command, bool beginGroup = false,
                       Qt::ToolButtonStyle style = Qt::ToolButtonTextUnderIcon);

/// The images of an icon strip, left to right, each with its pixmap for high pixel densities.
std::vector<QIcon> iconsFromStrip(const QString& stripPath);
