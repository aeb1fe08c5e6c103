#pragma once

#include "tests/support/Disturbance.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/Extent.h"
#include "tests/support/FaultyDisk.h"
#include "tests/support/Libraries.h"

/// A command or an edit that writes.
struct Command {
    /// What is left of it when it has failed. A code that could not be written stays in the grid.
    enum Left { Nothing, InTheGrid, WhatWasDone };

    const char* place;    ///< that records its failure
    const char* refused;  ///< a change that comes late in it
    Left left;
    std::function<void()> act;
    const char* chapter = "010101";
    /// What has been done before, if anything.
    std::function<void()> before = {};
};

/// Takes a file away and brings it back, in place of whatever stands there by then, when this goes.
class KeptFile {
public:
    explicit KeptFile(const QString& path) : m_path(path) { EXPECT_TRUE(QFile::rename(m_path, kept())); }
    ~KeptFile() {
        QFile::remove(m_path);
        EXPECT_TRUE(QFile::rename(kept(), m_path));
    }
    Q_DISABLE_COPY(KeptFile)

private:
    QString kept() const { return m_path + u".kept"_s; }

    const QString m_path;
};

/// The awkward library open in the real window, on a disk that can fail, and what is asked of both after something has
/// gone wrong. It shows the bills of the chapter 010101.
class Workplace : public ::testing::Test {
protected:
    Workplace();

    void click(const char* chapter);
    /// Closes the library, if it is open, opens it again and shows the bills of `chapter`.
    void reopen(const char* chapter = "010101");

    using Act = std::function<void()>;
    /// Does `act` and gives what was said: of error records the place, "module.procedure" and the number, of other
    /// messages title and text; questions and other dialogs are not told. What comes first is answered by `first`, if
    /// that is given, the rest by answer(). Fails the test when a lock is waited for longer than two seconds.
    QStringList messagesOf(const Act& act, const std::function<void(QWidget*)>& first = {});
    /// Yes to a question, 新 to a name dialog. Fails the test when a message could be taken for rich text.
    static void answer(QWidget* window);
    /// Whether an error with one of `numbers` ("8|14") was told.
    static bool tellsError(const QStringList& said, const char* numbers);

    /// What is said when the first bill gets a name.
    QStringList rename(const QString& name);
    /// What is said when a ration's code is typed into the first ration of the bill.
    QStringList typeCode(const QString& code);
    /// What is said when `text` is entered into the box `name` of the dialog that a command of the main window opens.
    QStringList enter(int command, const char* name, const QString& text);

    /// All that the window shows.
    std::string shown() const;
    /// Fails the test unless the window shows what a fresh one shows of the file, and nothing is left uncommitted.
    void expectWindowIsFile();
    /// Fails the test unless an edit is in the file as soon as it is made.
    void expectThatWorkGoesOn();

    /// Everything that writes.
    std::vector<Command> commands();

    FaultyDisk disk;
    /// For a lock, before something was said, in the last messagesOf().
    qint64 longestWait = 0;
    EditorDriver user;
    frmMain& main = *user.window();
    const QString path = user.path();

private:
    int m_edits = 0;
};

/// "ok", or what is wrong with the file itself.
QString integrityOf(const QString& library);
