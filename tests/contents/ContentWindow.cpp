#include "tests/contents/ContentWindow.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QVBoxLayout>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "editor/contents/ContentOutline.h"
#include "storage/LibraryConnection.h"

ContentWindow::ContentWindow() {
    const QString region = QStringLiteral("广东省");
    rations.add(QStringLiteral("GD2018ZHDE01"), region, QStringLiteral("building.db"),
                {{QStringLiteral("A1-1"), QStringLiteral("人工挖土方"), QStringLiteral("100m3")},
                 {QStringLiteral("a1-2"), QStringLiteral("机械挖土方"), QStringLiteral("1000m3")},
                 {QStringLiteral("A1-3"), QStringLiteral("装车"), QStringLiteral("t")},
                 {QStringLiteral("BAD"), QStringLiteral("it's"), QStringLiteral("m")}});
    rations.add(QStringLiteral("GD2018ZHDE03"), region, QStringLiteral("installation.db"),
                {{QStringLiteral("C1-1"), QStringLiteral("管道"), QStringLiteral("10m")}});
    rations.list(QStringLiteral("GONE"), region, QStringLiteral("gone.db"));

    pane.setConnection(library.connection());
    pane.currentBill = [this] { return bill; };
    pane.DekID = QStringLiteral("GD2018ZHDE99");
    pane.setDekComboList(QStringLiteral("#GD2018ZHDE01;建筑定额|#GD2018ZHDE03;安装定额|#GONE;丢失"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&pane);
    layout->addWidget(&other);
    resize(900, 460);
    show();
    activate();
    grid().setFocus();
}

void ContentWindow::activate() const {
    // What a closed box or list has still to tell comes first.
    QCoreApplication::processEvents();
    window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window()));
}

int ContentWindow::rowOf(const QString& cont) const {
    for (int row = 0; row < grid().rowCount(); ++row)
        if (grid().text(row, QStringLiteral("cont")) == cont)
            return row;
    return -1;
}

void ContentWindow::select(const QString& cont) const {
    ASSERT_GE(rowOf(cont), 0) << qPrintable(cont);
    grid().setCell(rowOf(cont), QStringLiteral("cont"));
}

QStringList ContentWindow::shown() const {
    QStringList lines;
    for (int row = 0; row < grid().rowCount(); ++row) {
        QStringList cells{QString::number(grid().level(row))};
        for (int column = 0; column < 8; ++column)
            cells << grid().text(row, grid().key(column));
        lines << cells.join(QLatin1Char('|'));
    }
    return lines;
}

QStringList ContentWindow::fresh() const {
    const std::unique_ptr<Connection> connection = GetOrmConn(library.path());
    QStringList lines;
    const QString prof = zeroPadded(pane.cboProfession()->currentData().toInt(), 2);
    for (const OutlineRow& row : LoadBillContent(connection.get(), bill.id, prof)) {
        const QString level = QString::number(row.level);
        lines << QStringList{level,        row.cont,    row.unit,   row.dekName, row.contID,
                             row.contDeID, row.contNum, row.subNum, level}
                     .join(QLatin1Char('|'));
    }
    return lines;
}

QStringList ContentWindow::outline() const {
    QStringList lines;
    for (int row = 0; row < grid().rowCount(); ++row)
        lines << QString(grid().level(row), QLatin1Char('-')) + grid().text(row, QStringLiteral("cont"));
    return lines;
}

QLineEdit* ContentWindow::openEditor(int row, const QString& key) const {
    activate();
    grid().setFocus();
    grid().setCell(row, key);
    QTest::keyClick(&grid(), Qt::Key_F2);
    return grid().isEditing() ? qobject_cast<QLineEdit*>(QApplication::focusWidget()) : nullptr;
}

void ContentWindow::type(int row, const QString& text, Qt::Key end) const {
    QLineEdit* editor = openEditor(row);
    ASSERT_TRUE(editor);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    typeText(text);
    key(end);
}

void ContentWindow::chooseLibrary(int row, const QString& dekId) const {
    activate();
    grid().setFocus();
    grid().setCell(row, QStringLiteral("dekName"));
    QTest::keyClick(&grid(), Qt::Key_F2);
    auto* choice = grid().findChild<QComboBox*>(QStringLiteral("cellEditor"));
    ASSERT_TRUE(grid().isEditing() && choice);
    choice->view()->setCurrentIndex(choice->model()->index(choice->findData(dekId), 0));
    QTest::keyClick(choice->view(), Qt::Key_Return);
    ASSERT_FALSE(grid().isEditing());
}

QString ContentWindow::missingLibrary() const {
    return joinPath(dataPath + QStringLiteral("广东省"), QStringLiteral("gone.db"));
}

void ContentWindow::key(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }

void typeText(const QString& text) {
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(character), {});
}
