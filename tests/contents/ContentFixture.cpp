#include "tests/contents/ContentFixture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QMessageBox>
#include <QTest>
#include <QVBoxLayout>

#include "app/base/Text.h"
#include "editor/contents/ContentOutline.h"
#include "storage/LibraryConnection.h"
#include "tests/support/Typing.h"

ContentFixture::ContentFixture() {
    rations.list({{"GD2018ZHDE01", "", "building.db"}, {"GD2018ZHDE03", "", "pipes.db"}, {"GONE", "", "gone.db"}});
    rations.make("building.db", {"1,1,'A1-1','人工挖土方','100m3'", "2,1,'a1-2','机械挖土方','1000m3'",
                                 "3,1,'A1-3','装车','t'", "4,1,'BAD','it''s','m'"});
    rations.make("pipes.db", {"1,1,'C1-1','管道','10m'"});
    library.run(
        "INSERT INTO tblCont(ID,code,num,cont,prof,billID,IsDel) VALUES(1,'010101001',1,'挖土','01',7,0),"
        "(2,'010101001',2,'运土','0102',7,0),(4,'010101001',3,'抹灰','02',7,0),(3,'010101001',4,'回填','01',7,0),"
        "(5,'010101002',2,'other bill','01',8,0)");
    library.run(
        "INSERT INTO tblContDe(ID,contID,subNum,subCont,deh,name,unit,dekID) VALUES"
        "(1,1,1,'人工','a1-1','人工挖土方','100m3','GD2018ZHDE01'),"
        "(2,1,1,'人工','A1-2','机械挖土方','1000m3','GD2018ZHDE01'),(3,1,1,'人工','A1-3','装车','t','GD2018ZHDE01'),"
        "(4,1,2,'机械',NULL,NULL,NULL,NULL),(5,1,3,'晾晒','','','',''),(6,2,1,'装车','A1-3','装车','t','GD2018ZHDE01'"
        ")");

    pane.setConnection(library.connection());
    pane.currentBill = [this] { return bill; };
    pane.DekID = QStringLiteral("GD2018ZHDE99");
    pane.setDekComboList(QStringLiteral("#GD2018ZHDE01;建筑定额|#GD2018ZHDE03;安装定额|#GONE;丢失"));
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(&pane);
    layout->addWidget(&other);
    window.resize(900, 460);
    window.show();
    pane.LoadBillContent(7);
    activate();
    grid.setFocus();
}

QStringList ContentFixture::lines(std::initializer_list<const char*> texts) {
    QStringList list;
    for (const char* text : texts)
        list << QString::fromUtf8(text);
    return list;
}

QStringList ContentFixture::shown() const {
    QStringList lines;
    for (int row = 0; row < grid.rowCount(); ++row) {
        QStringList cells{QString::number(grid.level(row))};
        for (int column = 0; column < 8; ++column)
            cells << grid.text(row, grid.key(column));
        lines << cells.join(QLatin1Char('|'));
    }
    return lines;
}

QStringList ContentFixture::fresh() const {
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

QStringList ContentFixture::outline() const {
    QStringList lines;
    for (int row = 0; row < grid.rowCount(); ++row)
        lines << QString(grid.level(row), QLatin1Char('-')) + grid.text(row, QStringLiteral("cont"));
    return lines;
}

QStringList ContentFixture::contents() const {
    return library.rowsInFile("SELECT num,cont,prof,code,billID,IsDel FROM tblCont ORDER BY billID,num");
}

QStringList ContentFixture::detail(int id) const {
    return library.rowsInFile(sql("SELECT subNum,subCont,deh,name,unit,dekID FROM tblContDe WHERE ID='", id, "'"));
}

void ContentFixture::select(const char* cont) const {
    for (int row = 0; row < grid.rowCount(); ++row)
        if (grid.text(row, QStringLiteral("cont")) == QString::fromUtf8(cont))
            return grid.setCell(row, QStringLiteral("cont"));
    ADD_FAILURE() << cont;
}

QLineEdit* ContentFixture::openEditor(int row, const char* key) const {
    activate();
    grid.setFocus();
    grid.setCell(row, QString::fromLatin1(key));
    QTest::keyClick(&grid, Qt::Key_F2);
    return grid.isEditing() ? qobject_cast<QLineEdit*>(QApplication::focusWidget()) : nullptr;
}

void ContentFixture::type(int row, const char* text, Qt::Key end) const {
    QLineEdit* editor = openEditor(row);
    ASSERT_TRUE(editor);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    typeText(editor, QString::fromUtf8(text));
    key(end);
}

void ContentFixture::chooseLibrary(int row, const char* dekId) const {
    openEditor(row, "dekName");
    auto* choice = grid.findChild<QComboBox*>(QStringLiteral("cellEditor"));
    ASSERT_TRUE(grid.isEditing() && choice);
    choice->view()->setCurrentIndex(choice->model()->index(choice->findData(QString::fromLatin1(dekId)), 0));
    QTest::keyClick(choice->view(), Qt::Key_Return);
    ASSERT_FALSE(grid.isEditing());
}

void ContentFixture::key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

void ContentFixture::activate() const {
    // What a closed box or list has still to tell comes first.
    QCoreApplication::processEvents();
    window.window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.window()));
}

void ContentFixture::confirmed(int row, void (ContentPane::*command)()) {
    answers.press(QMessageBox::Yes);
    grid.setRow(row);
    (pane.*command)();
}

void ContentFixture::refuse(const SqlText& change) const {
    static int triggers = 0;
    library.run(
        sql("CREATE TRIGGER refuse", ++triggers, " BEFORE ", change, " BEGIN SELECT RAISE(ABORT,'refused'); END"));
}
