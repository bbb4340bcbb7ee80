#include "app/Application.h"
#include "app/Program.h"
#include "commands/CommandLine.h"
#include "forms/Dialogs.h"
#include "forms/Icons.h"
#include "model/GameModel.h"
#include "painting/BookPages.h"
#include "painting/MapPicture.h"
#include "qt/Display.h"
#include "qt/QtText.h"
#include "session/StateFolder.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QSettings>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

/// The folder of this executable; that of the name it was started by where the system does not tell.
std::string ProgramFolder(const char* startedAs) {
    std::error_code error;
    const std::filesystem::path itself = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? zem::PathFromQt(QFileInfo(zem::PathToQt(startedAs)).absolutePath())
                 : itself.parent_path().string();
}

/// A picture needs letters, and letters need an application, though no screen.
template <class Paint>
std::string InApplication(Paint paint) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static char name[] = "zem";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    const QGuiApplication application(count, arguments);
    return paint();
}

zem::Painters MakePainters() {
    return {[](const zem::routing::RoutedMap& map, const std::string& file) {
                const zem::PictureFormat format = zem::PictureFormatOf(file);
                return InApplication([&] { return zem::MapPicture(map, format); });
            },
            [](const std::string& html, const zem::routing::RoutedMap& map) {
                return InApplication([&] { return zem::BookPages(html, map); });
            }};
}

int RunEditor(int argc, char** argv, const std::string& programFolder, const std::string& file) {
    if (!zem::HasDisplay()) {
        std::cerr << "zem: there is no display to open a window on; \"zem print FILE\" shows a game here\n";
        return 1;
    }
    zem::Application application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("zem")); // whose icon and name the desktop shows
    QApplication::setWindowIcon(zem::ThemedIcon(QStringLiteral("zem")));
    QSettings store(QStringLiteral("Veldt"), QStringLiteral("Veldt"));
    zem::QtDialogs dialogs;
    zem::GameModel game;
    zem::Program program(game, store, dialogs, zem::PathToQt(programFolder), zem::StateFolder());
    application.SetNet(dialogs, [&program] { program.Rescue(); });
    const auto clear = qScopeGuard([&application] { application.ClearNet(); });
    program.Main(zem::PathToQt(file));
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN); // a file that may grow no further fails its write, not the program
#endif
    try {
        const std::string programFolder = ProgramFolder(argv[0]);
        const zem::CommandLineResult result =
            zem::RunCommandLine({argv + 1, argv + argc}, programFolder, std::cout, std::cerr, MakePainters());
        return result.editFile ? RunEditor(argc, argv, programFolder, *result.editFile) : result.exitStatus;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zem: %s\n", error.what());
        return 1;
    }
}
