#pragma once

#include <gtest/gtest.h>

#include <QTest>

#include "app/shell/frmMain.h"
#include "tests/support/SampleProgram.h"

/// The main window as a user has it after the start.
class ShellFixture : public ::testing::Test {
protected:
    ShellFixture() {
        installSamples();
        window.MDIForm_Load();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void run(int id) {
        window.commandBars()->execute(id);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    frmMain window;
};
