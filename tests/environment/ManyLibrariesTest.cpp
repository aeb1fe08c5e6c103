// Fifty libraries open at once: each can be worked in, the window list names them all, one command closes them all.

#include <QElapsedTimer>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "app/base/Definitions.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

constexpr int count = 50;

class ManyLibraries : public Workplace {
protected:
    ManyLibraries() : Workplace(awkwardLibrary()) { user.close(); }
    ~ManyLibraries() override { user.open(); }
};

/// kB of a line of the process' own status.
qint64 memory(const char* line) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& text : status.readAll().split('\n')) {
        if (text.startsWith(line))
            return text.mid(text.indexOf(':') + 1).trimmed().split(' ').value(0).toLongLong();
    }
    return 0;
}

/// The libraries that a menu names, in its order.
QStringList listedIn(QMenu* menu) {
    Q_EMIT menu->aboutToShow();
    QStringList names;
    for (const QAction* entry : menu->actions()) {
        if (entry->isCheckable() && entry->isVisible())
            names << entry->text().section(QLatin1Char(' '), 1).replace(QLatin1String("&&"), QLatin1String("&"));
    }
    return names;
}

}  // namespace

TEST_F(ManyLibraries, AreOpenAtOnce) {
    const ModalAnswers noMessages;
    QStringList paths;
    QStringList names;
    for (int number = 0; number < count; ++number) {
        names << QStringLiteral("库 & %1.bdb").arg(number);
        paths << dataPath + names.last();
        QFile::remove(paths.last());
        ASSERT_TRUE(QFile::copy(user.path(), paths.last()));
    }
    const qint64 before = memory("VmRSS");
    QElapsedTimer clock;
    clock.start();
    for (const QString& path : paths)
        user.window()->LoadBillDB(path);
    EditorDriver::settle();
    const qint64 opening = clock.restart();
    const qint64 opened = memory("VmRSS");
    ASSERT_EQ(user.window()->editors().size(), count);

    auto* windows = user.window()->findChild<QMdiArea*>();
    auto* menu = user.window()->findChild<QMenu*>(QStringLiteral("窗口(&W)"));
    ASSERT_TRUE(menu);
    EXPECT_EQ(listedIn(menu), names);
    clock.restart();
    for (int number = count - 1; number >= 0; --number) {
        const QString& path = paths[number];
        for (QMdiSubWindow* window : windows->subWindowList()) {
            if (window->widget()->windowTitle() == names[number])
                windows->setActiveSubWindow(window);
        }
        ASSERT_EQ(user.editor()->DBFilePath(), path);
        click("010101");
        const QString text = QStringLiteral("第%1个").arg(number);
        ASSERT_TRUE(user.edit(user.bills(), 0, QStringLiteral("Name"), text));
        EXPECT_EQ(rowsInFile(path, "SELECT Name FROM tblBill WHERE Code='010101001'"), QStringList{text});
    }
    const qint64 working = clock.restart();
    const qint64 worked = memory("VmRSS");

    user.window()->commandBars()->execute(261);
    const qint64 closing = clock.elapsed();
    EXPECT_TRUE(user.window()->editors().isEmpty());
    for (const QString& path : paths)
        EXPECT_TRUE(QFile::remove(path));
    reportFigures(
        QStringLiteral("%1 libraries: opened in %2 ms, each clicked and edited in %3 ms, all closed in %4 ms, "
                       "%5 kB memory a library, %6 kB after work in it")
            .arg(count)
            .arg(opening)
            .arg(working)
            .arg(closing)
            .arg((opened - before) / count)
            .arg((worked - before) / count));
}
