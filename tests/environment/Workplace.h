#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "tests/gui/Comparison.h"
#include "tests/gui/EditorDriver.h"

class ModalAnswers;

/// One library open in the real window, and what is asked of both after something has gone wrong.
class Workplace : public ::testing::Test {
protected:
    /// Opens the library at `path` and shows the bills of the chapter 010101.
    explicit Workplace(const QString& path);

    void click(const char* chapter);
    void reopen();

    /// Does `act`, answering questions with Yes, and gives what was said: of error records the place,
    /// "module.procedure" and the number, of other messages title and text.
    QStringList messagesOf(const std::function<void(ModalAnswers&)>& act);
    QStringList messagesOf(const std::function<void()>& act);

    /// Answers the name dialog that comes next.
    static void giveName(ModalAnswers& answers, const QString& name);

    /// Fails the test unless the window shows what the file gives and nothing is left uncommitted.
    void expectWindowIsFile();
    /// Fails the test unless an edit is in the file as soon as it is made.
    void expectThatWorkGoesOn();

    EditorDriver user;
    Prescribed prescribed;
    Comparison comparison;

private:
    void watch();
    int m_edits = 0;
};

/// Every row of every table of a library, read over a connection of its own.
QStringList contentOf(const QString& library);

/// "ok", or what is wrong with the file itself.
QString integrityOf(const QString& library);
