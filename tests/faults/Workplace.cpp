#include "tests/faults/Workplace.h"

#include "tests/support/Snapshot.h"

// Opened anew it syncs as the program does.
Workplace::Workplace() : user(awkwardLibrary()) { reopen(); }

void Workplace::click(const char* chapter) {
    KeyedTree::Node* node = user.tree()->node(u'K' + QString::fromLatin1(chapter));
    ASSERT_TRUE(node) << chapter;
    user.click(node);
    EditorDriver::settle();
}

void Workplace::reopen(const char* chapter) {
    if (user.editor())
        user.close();
    main.LoadBillDB(path);
    EditorDriver::settle();
    ASSERT_TRUE(user.editor());
    user.activate();
    click(chapter);
}

QStringList Workplace::messagesOf(const Act& act, const std::function<void(QWidget*)>& first) {
    ModalAnswers answers;
    longestWait = 0;
    answers.otherwise([&, before = disk.counts().waited](QWidget* window) mutable {
        longestWait = qMax(longestWait, disk.counts().waited - std::exchange(before, disk.counts().waited));
        answer(window);
    });
    if (first)
        answers.then(first);
    act();
    EditorDriver::settle();
    user.activate();
    EXPECT_LE(longestWait, 2000);
    static const QRegularExpression told(u"(?s)^(?!.*(确认|确实)).*(: |^\\w+\\.\\w* -?\\d+$)"_s);
    return answers.takeRecords().filter(told);
}

void Workplace::answer(QWidget* window) {
    if (const auto* box = qobject_cast<QMessageBox*>(window)) {
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_LE(box->text().size(), 2001);
        QAbstractButton* yes = box->button(QMessageBox::Yes);
        QTest::mouseClick(yes ? yes : box->button(QMessageBox::Ok), Qt::LeftButton);
    } else if (window->findChild<QLineEdit*>(u"txtContent"_s)) {
        EditorDriver::entering(u"txtContent"_s, {u"新"_s})(window);
    } else {
        window->close();
    }
}

bool Workplace::tellsError(const QStringList& said, const char* numbers) {
    return said.contains(QRegularExpression(u"^\\w+\\.\\w* (%1)$"_s.arg(QLatin1String(numbers))));
}

QStringList Workplace::rename(const QString& name) {
    return messagesOf([&] { user.edit(user.bills(), 0, u"Name"_s, name); });
}

QStringList Workplace::typeCode(const QString& code) {
    return messagesOf([&] {
        EXPECT_TRUE(user.edit(user.contents(), 2, u"cont"_s, code));
        user.contents()->cancelEdit();
    });
}

QStringList Workplace::enter(int command, const char* name, const QString& text) {
    return messagesOf([&] { main.commandBars()->execute(command); },
                      EditorDriver::entering(QLatin1String(name), {text}));
}

std::vector<Command> Workplace::commands() {
    using enum Command::Left;
    const auto run = [this](int host, int id) { return [=, this] { user.run(host, id); }; };
    const auto onContent = [this](int level, int id) {
        return [=, this] {
            KeyedGrid* contents = user.contents();
            int row = contents->rowCount() - 1;
            while (row > 0 && contents->level(row) != level)
                --row;
            contents->setCell(row, u"cont"_s);
            user.run(2, id);
        };
    };
    const auto edit = [this](KeyedGrid* (EditorDriver::*grid)() const, const char* key) {
        return [=, this] { user.edit((user.*grid)(), 0, QLatin1String(key), u"新文"_s); };
    };
    const char* const ddl = "ModDBOperator.ExecuteDDL";
    const auto remove = [=, this] { messagesOf(run(2, 201)); };
    const auto go = [this](int key) { return [=, this] { user.key(user.bills(), key, Qt::ControlModifier); }; };
    return {
        {"frmEditor.AddBillSYB", "INSERT ON tblSYB", Nothing, run(1, 100)},
        {"frmEditor.AddBillSYB", "INSERT ON tblSYB", Nothing, run(1, 101), "0301"},
        {"frmEditor.", "UPDATE ON tblSYB", Nothing, run(1, 102)},
        {"frmEditor.DeleteBillSYB", "DELETE ON tblSYB", WhatWasDone, run(1, 103), "030101"},
        {"frmEditor.ExchangeSYBNode", "UPDATE ON tblCont", Nothing, run(1, 105)},
        {"frmEditor.mnuAddBill_Click", "UPDATE ON tblCont", Nothing, run(2, 200)},
        {"frmEditor.mnuDeleteBill_Click", "DELETE ON tblBill", Nothing, run(2, 201)},
        {"frmEditor.MoveBillRow", "UPDATE ON tblBill", Nothing, run(2, 105)},
        {ddl, "UPDATE ON tblBill", Nothing, edit(&EditorDriver::bills, "Name")},
        {ddl, "UPDATE ON tblBill", Nothing,
         [this] {
             user.typeInto(user.rule(), u"新文"_s);
             user.key(user.rule(), Qt::Key_Tab);
         }},
        {ddl, "INSERT ON tblBillSpec", Nothing, run(3, 300)},
        {"frmEditor.mnuDeleteFeature_Click", "DELETE ON tblBillSpec", Nothing, run(3, 301)},
        {ddl, "UPDATE ON tblBillSpec", Nothing, edit(&EditorDriver::features, "Name")},
        {ddl, "INSERT ON tblSpecEnum", Nothing, run(4, 300)},
        {"frmEditor.mnuDeleteFeatureVal_Click", "DELETE ON tblSpecEnum", Nothing, run(4, 301)},
        {"frmEditor.grdSpecEnum_AfterEdit", "UPDATE ON tblBillSpec", Nothing,
         edit(&EditorDriver::values, "eigenValue")},
        {"frmEditor.munAddBillCont_Click", "INSERT ON tblCont", WhatWasDone, run(2, 400)},
        {"frmEditor.munAddBillSubCont_Click", "INSERT ON tblContDe", WhatWasDone, onContent(1, 401)},
        {"frmEditor.mnuDelBillCont_Click", "DELETE ON tblCont", Nothing, onContent(0, 403)},
        {"frmEditor.munDelBillSubCont_Click", "DELETE ON tblContDe", Nothing, onContent(1, 403)},
        {"frmEditor.munDelBillContDe_Click", "UPDATE ON tblContDe", WhatWasDone, onContent(2, 403)},
        {ddl, "UPDATE ON tblContDe", InTheGrid, [this] { user.edit(user.contents(), 2, u"cont"_s, u"a1-3"_s); }},
        {"LibraryHistory.undo", "INSERT ON tblBill", Nothing, go(Qt::Key_Z), "010101", remove},
        {"LibraryHistory.redo", "DELETE ON tblBill", Nothing, go(Qt::Key_Y), "010101",
         [=] { remove(), go(Qt::Key_Z)(); }},
    };
}

std::string Workplace::shown() const { return textOf(snapshotOf(*user.editor())); }

void Workplace::expectWindowIsFile() {
    const ModalAnswers noMessages;
    EXPECT_EQ(shown(), textOf(user.shownAfresh()));
    EXPECT_FALSE(QFile::exists(path + u"-journal"_s)) << "something is uncommitted";
}

void Workplace::expectThatWorkGoesOn() {
    SCOPED_TRACE("what is done next");
    if (user.chapter() != u"010101"_s || !user.bills()->hasRows())
        click("010101");
    const QString name = u"之后%1"_s.arg(++m_edits);
    EXPECT_EQ(rename(name), QStringList());
    EXPECT_EQ(rowsInFile(path, sql("SELECT Name FROM tblBill WHERE ID=", user.bills()->text(0, u"id"_s))),
              QStringList{name});
}

QString integrityOf(const QString& library) { return rowsInFile(library, "PRAGMA integrity_check").join(u'\n'); }
