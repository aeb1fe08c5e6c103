#include <QApplication>
#include <QScreen>
#include <QWidget>

/// The least that a program with a window can be, as large as the editor's main window: what starting is compared with.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize((window.screen()->availableSize() * 0.88).boundedTo(QSize(1760, 1100)));
    window.show();
    return QApplication::exec();
}
