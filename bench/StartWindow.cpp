// The whole start-up of the editor, as its main function does it, up to the first painting of the start
// window.
#include "FirstPaint.h"
#include "app/Program.h"
#include "commands/CommandLine.h"
#include "forms/Dialogs.h"
#include "model/GameModel.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <iostream>

int main(int argc, char** argv) {
    const zem::CommandLineResult result =
        zem::RunCommandLine({argv + 1, argv + argc}, ZEM_PROGRAM_FOLDER, std::cout, std::cerr);
    if (!result.editFile)
        return result.exitStatus;
    QApplication application(argc, argv);
    zem::bench::QuitAtFirstPaint quit(application);
    const QTemporaryDir folder;
    QSettings store(folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    // Without this setting a message comes before the window.
    store.setValue(QStringLiteral("Init/InstalledVer"), QStringLiteral("yes"));
    zem::QtDialogs dialogs;
    zem::GameModel game;
    zem::Program program(game, store, dialogs, QStringLiteral(ZEM_PROGRAM_FOLDER), folder.path());
    program.Main(QString::fromStdString(*result.editFile));
    return QApplication::exec();
}
