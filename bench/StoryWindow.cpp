// The whole start-up of the game-running program, as its main function does it, up to the first painting of a
// window that shows the first text of a game.
#include "FirstPaint.h"
#include "forms/Dialogs.h"
#include "player/PlayerWindow.h"
#include "player/ReadWorld.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    QSettings store(folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    zem::QtDialogs dialogs;
    zem::PlayerWindow window(store, dialogs, zem::ReadWorld);
    window.show();
    if (!window.Open(QString::fromLocal8Bit(argv[1])))
        return 1;
    const zem::bench::QuitAtFirstPaint quit(application);
    return QApplication::exec();
}
