#include <QApplication>
#include <QTimer>

#include "app/controls/Style.h"
#include "app/shell/modMain.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    applyApplicationStyle(application);
    loadChineseTexts();
    // Inside the event loop, so that a message of the start behaves like any other.
    QTimer::singleShot(0, [] { Main(); });
    return QApplication::exec();
}
