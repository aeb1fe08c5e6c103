// Many libraries open at once: each can be worked in, the window list names them all, one command closes them all.

#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "app/base/Definitions.h"
#include "tests/faults/Workplace.h"
#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"

using namespace Qt::StringLiterals;

namespace {

class ManyLibraries : public Workplace {
protected:
    ManyLibraries() : Workplace(awkwardLibrary()) { user.close(); }
};

}  // namespace

TEST_F(ManyLibraries, AreOpenAtOnce) {
    constexpr int count = 20;
    QStringList names;
    for (int number = 0; number < count; ++number) {
        names << u"库 & %1.bdb"_s.arg(number);
        QFile::remove(dataPath + names.last());
        ASSERT_TRUE(QFile::copy(user.path(), dataPath + names.last()));
    }
    const ModalAnswers noMessages;
    for (const QString& name : names)
        main.LoadBillDB(dataPath + name);
    EditorDriver::settle();
    ASSERT_EQ(main.editors().size(), count);

    auto* menu = main.findChild<QMenu*>(u"窗口(&W)"_s);
    ASSERT_TRUE(menu);
    Q_EMIT menu->aboutToShow();
    QStringList listed;
    for (const QAction* entry : menu->actions()) {
        if (entry->isCheckable() && entry->isVisible())
            listed << entry->text().section(u' ', 1).replace(u"&&"_s, u"&"_s);
    }
    EXPECT_EQ(listed, names);
    for (int number = count - 1; number >= 0; --number) {
        const QString path = dataPath + names[number];
        const EditorDriver library(&main, path);
        library.bringToFront();
        ASSERT_EQ(user.editor()->DBFilePath(), path);
        click("010101");
        const QString text = u"第%1个"_s.arg(number);
        ASSERT_TRUE(user.edit(user.bills(), 0, u"Name"_s, text));
        EXPECT_EQ(rowsInFile(path, "SELECT Name FROM tblBill WHERE Code='010101001'"), QStringList{text});
    }

    main.commandBars()->execute(261);
    EXPECT_TRUE(main.editors().isEmpty());
    for (const QString& name : names)
        EXPECT_TRUE(QFile::remove(dataPath + name));
}
