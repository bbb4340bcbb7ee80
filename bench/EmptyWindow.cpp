// The yardstick of the start-up: an empty Qt window that ends the program once it has been painted.
#include "FirstPaint.h"

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    zem::bench::QuitAtFirstPaint quit(application);
    QWidget window;
    window.resize(560, 340);
    window.show();
    return QApplication::exec();
}
