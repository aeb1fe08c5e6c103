#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QStringList>
#include <QWidget>

#include "editor/contents/ContentPane.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/RationLibraries.h"
#include "tests/support/TemporaryLibrary.h"

/// A shown, active window with the contents of bill 7 (code 010101001) of a library, and a text box beside them:
///
///     0 挖土, 1 -人工, 2 --A1-1, 3 --A1-2, 4 --A1-3, 5 -机械, 6 -晾晒, 7 运土, 8 -装车, 9 --A1-3, 10 回填
///
/// A content of another profession stands between 运土 and 回填. Ration libraries GD2018ZHDE01 (A1-1, a1-2, A1-3 and
/// BAD, whose name cannot be written) and GD2018ZHDE03 (C1-1) are there; GONE is listed and missing.
class ContentFixture : public ::testing::Test {
protected:
    ContentFixture();

    static QStringList lines(std::initializer_list<const char*> texts);

    /// The rows as "level|cont|Unit|dekName|contID|contDeID|contNum|subNum|contType".
    QStringList shown() const;
    /// What a fresh load of the file would show.
    QStringList fresh() const;
    void expectWindowIsFile() const { EXPECT_EQ(shown(), fresh()); }
    /// The visible texts alone, indented by level.
    QStringList outline() const;
    /// The contents in the file as "num|cont|prof|code|billID|IsDel".
    QStringList contents() const;
    /// A row of a second-level content in the file as "subNum|subCont|deh|name|unit|dekID"; empty when it is gone.
    QStringList detail(int id) const;

    /// Makes the row whose text is `cont` current.
    void select(const char* cont) const;
    /// Opens the editor of a cell as F2 does; the line editor, or null when there is none.
    QLineEdit* openEditor(int row, const char* key = "cont") const;
    /// Types `text` into the text of a row and presses `end`.
    void type(int row, const char* text, Qt::Key end = Qt::Key_Return) const;
    /// Chooses a ration library in the list of a ration row.
    void chooseLibrary(int row, const char* dekId) const;
    static void key(Qt::Key key);
    /// Makes sure that keys arrive in the window, whatever box was there before.
    void activate() const;
    /// Answers yes to the question of a command on a row.
    void confirmed(int row, void (ContentPane::*command)());
    /// Makes the library refuse a kind of change, for instance "INSERT ON tblCont".
    void refuse(const SqlText& change) const;

    QWidget window;
    TemporaryLibrary library;
    RationLibraries rations;
    CurrentBill bill{7, QStringLiteral("010101001")};
    ContentPane pane;
    KeyedGrid& grid = *pane.grdConcent();
    QLineEdit other;
    ModalAnswers answers;
};
