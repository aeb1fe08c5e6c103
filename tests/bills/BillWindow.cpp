#include "tests/bills/BillWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputMethodEvent>
#include <QPlainTextEdit>
#include <QTest>
#include <QVBoxLayout>

BillWindow::BillWindow() : bills(new BillPane(this)), features(new FeaturePane(this)) {
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(bills), static_cast<QWidget*>(bills->txtRule()),
                          static_cast<QWidget*>(bills->txtContent()), static_cast<QWidget*>(features)})
        layout->addWidget(part);
    bills->selectedChapter = [this] { return chapter; };
    bills->deselectChapter = [this] { events << QStringLiteral("deselected"); };
    bills->queryText = [this] { return search; };
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
    activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(this));
}

BillWindow::~BillWindow() {
    delete bills;
    delete features;
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
    // As an input method hands a text over.
    QInputMethodEvent typed;
    typed.setCommitString(text);
    QApplication::sendEvent(editor, &typed);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(grid->isEditing());
}

QStringList BillWindow::shown(const KeyedGrid* grid) {
    QStringList rows;
    for (int row = 0; row < grid->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid->model()->columnCount(); ++column) {
            if (!grid->key(column).isEmpty())
                cells << grid->text(row, grid->key(column));
        }
        rows << cells.join(QLatin1Char('|'));
    }
    return rows;
}

void BillWindow::expectWindowIsFile() const {
    ASSERT_EQ(shown(list()), library.rowsInFile(sql("SELECT ID,IFNULL(CodePrefix,''),Code,IFNULL(Name,''),"
                                                    "IFNULL(Unit,''),IFNULL(Cont,''),IFNULL(Rule,'') FROM tblBill "
                                                    "WHERE Code LIKE '",
                                                    chapter, "___' ORDER BY Code")));
    const int row = list()->row();
    ASSERT_EQ(row >= 0, list()->hasRows());
    ASSERT_EQ(bills->txtRule()->toPlainText(), list()->text(row, QStringLiteral("RULE")));
    ASSERT_EQ(bills->txtContent()->toPlainText(), list()->text(row, QStringLiteral("Cont")));
    ASSERT_EQ(bills->txtRule()->isReadOnly(), row < 0);
    ASSERT_EQ(shown(features->grdSpec()),
              library.rowsInFile(sql("SELECT ID,IFNULL(Name,''),IFNULL(Type,''),IFNULL(Unit,''),IFNULL(DefVal,'') FROM "
                                     "tblBillSpec WHERE BillID=",
                                     list()->value(row, QStringLiteral("id")))));
    const qint64 feature = features->grdSpec()->value(features->grdSpec()->row(), QStringLiteral("id"));
    ASSERT_EQ(shown(features->grdSpecEnum()),
              library.rowsInFile(sql("SELECT ID,CASE IsUse WHEN 1 THEN 1 ELSE 2 END,IFNULL(EigenValue,'') FROM "
                                     "tblSpecEnum WHERE SpecID=",
                                     feature)));
}
