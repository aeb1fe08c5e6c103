// Fifty libraries open at once: each can be worked in, the window list names them all, one command closes them all.

#include <QElapsedTimer>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "app/base/Definitions.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Libraries.h"
#include "tests/faults/Workplace.h"
#include "tests/support/Extent.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

class ManyLibraries : public Workplace {
protected:
    ManyLibraries() : Workplace(awkwardLibrary()) { user.close(); }
};

/// kB of memory that the process has.
qint64 memory() {
    const QByteArray status = bytesOf(u"/proc/self/status"_s);
    return status.mid(status.indexOf("VmRSS:") + 6).trimmed().split(' ').value(0).toLongLong();
}

}  // namespace

TEST_F(ManyLibraries, AreOpenAtOnce) {
    const int count = extent(12, 50);
    QStringList names;
    for (int number = 0; number < count; ++number) {
        names << u"库 & %1.bdb"_s.arg(number);
        QFile::remove(dataPath + names.last());
        ASSERT_TRUE(QFile::copy(user.path(), dataPath + names.last()));
    }
    const qint64 before = memory();
    QElapsedTimer clock;
    clock.start();
    const ModalAnswers noMessages;
    for (const QString& name : names)
        user.window()->LoadBillDB(dataPath + name);
    EditorDriver::settle();
    const qint64 opening = clock.restart();
    const qint64 opened = memory();
    ASSERT_EQ(user.window()->editors().size(), count);

    auto* menu = user.window()->findChild<QMenu*>(u"窗口(&W)"_s);
    ASSERT_TRUE(menu);
    Q_EMIT menu->aboutToShow();
    QStringList listed;
    for (const QAction* entry : menu->actions()) {
        if (entry->isCheckable() && entry->isVisible())
            listed << entry->text().section(u' ', 1).replace(u"&&"_s, u"&"_s);
    }
    EXPECT_EQ(listed, names);
    clock.restart();
    for (int number = count - 1; number >= 0; --number) {
        const QString path = dataPath + names[number];
        const EditorDriver library(user.window(), path);
        library.bringToFront();
        ASSERT_EQ(user.editor()->DBFilePath(), path);
        click("010101");
        const QString text = u"第%1个"_s.arg(number);
        ASSERT_TRUE(user.edit(user.bills(), 0, u"Name"_s, text));
        EXPECT_EQ(rowsInFile(path, "SELECT Name FROM tblBill WHERE Code='010101001'"), QStringList{text});
    }
    const qint64 working = clock.restart();
    const qint64 worked = memory();

    user.window()->commandBars()->execute(261);
    const qint64 closing = clock.elapsed();
    EXPECT_TRUE(user.window()->editors().isEmpty());
    for (const QString& name : names)
        EXPECT_TRUE(QFile::remove(dataPath + name));
    const QString figures =
        u"%1 libraries: opened in %2 ms, each clicked and edited in %3 ms, all closed in %4 ms, %5 kB memory a library, %6 kB after work in it"_s;
    reportFigures(figures.arg(count)
                      .arg(opening)
                      .arg(working)
                      .arg(closing)
                      .arg((opened - before) / count)
                      .arg((worked - before) / count));
}
