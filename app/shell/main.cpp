#include <QApplication>
#include <QTimer>

#include "app/controls/Style.h"
#include "app/shell/modMain.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    applyApplicationStyle(application);
    loadChineseTexts();
    // Started from the event loop: only there do quit() and message boxes work as they do later.
    QTimer::singleShot(0, [] { Main(); });
    return QApplication::exec();
}
