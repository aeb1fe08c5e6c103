#include "tests/bills/BillWindow.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTest>
#include <QVBoxLayout>

#include "tests/support/Typing.h"

BillWindow::BillWindow() : bills(new BillPane(this)), features(new FeaturePane(this)) {
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : std::initializer_list<QWidget*>{bills, bills->txtRule(), bills->txtContent(), features})
        layout->addWidget(part);
    bills->selectedChapter = [this] { return chapter; };
    bills->billChanged = [this](qint64 id) {
        events << QStringLiteral("bill %1").arg(id);
        features->LoadBillSpec(id);
    };
    bills->listEmptied = [this] { events << QStringLiteral("emptied"); };
    features->currentBillId = [this] { return list()->value(list()->row(), QStringLiteral("id")); };
    bills->setConnection(library.connection());
    features->setConnection(library.connection());
    resize(900, 900);
    show();
    activate();
}

BillWindow::~BillWindow() {
    delete bills;
    delete features;
}

void BillWindow::activate() {
    activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(this));
}

void BillWindow::click(KeyedGrid* grid, int row, const char* key) const {
    const QModelIndex cell = grid->model()->index(row, grid->column(QString::fromLatin1(key)));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(cell).center());
}

void BillWindow::edit(KeyedGrid* grid, int row, const char* key, const QString& text) const {
    grid->setFocus();
    grid->setCell(row, QString::fromLatin1(key));
    QTest::keyClick(grid, Qt::Key_F2);
    QWidget* editor = grid->findChild<QWidget*>(QStringLiteral("cellEditor"));
    ASSERT_TRUE(editor) << key << " cannot be edited";
    typeText(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(grid->isEditing());
}

QStringList BillWindow::shown(const KeyedGrid* grid) {
    QStringList rows;
    for (int row = 0; row < grid->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid->model()->columnCount(); ++column)
            if (!grid->key(column).isEmpty())
                cells << grid->text(row, grid->key(column));
        rows << cells.join(QLatin1Char('|'));
    }
    return rows;
}
