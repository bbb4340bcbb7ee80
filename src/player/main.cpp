#include "commands/TerminalPlay.h"
#include "forms/Dialogs.h"
#include "forms/FocusOutline.h"
#include "forms/Icons.h"
#include "player/PlayerWindow.h"
#include "player/ReadWorld.h"
#include "qt/Display.h"
#include "qt/QtText.h"

#include <QApplication>
#include <QSettings>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

namespace {

enum ExitStatus { Success = 0, FileProblem = 1, WrongUsage = 2 };

int PlayInWindow(int argc, char** argv, const std::string& file) {
    if (!zem::HasDisplay()) {
        std::cerr << "veldt: there is no display to open a window on; \"veldt --text FILE\" plays here\n";
        return FileProblem;
    }
    QApplication application(argc, argv);
    zem::OutlineFocus(application);
    QGuiApplication::setDesktopFileName(QStringLiteral("veldt"));
    QApplication::setWindowIcon(zem::ThemedIcon(QStringLiteral("veldt")));
    QSettings store(QStringLiteral("Veldt"), QStringLiteral("Veldt"));
    zem::QtDialogs dialogs;
    zem::PlayerWindow window(store, dialogs, zem::ReadWorld);
    window.show();
    if (!file.empty() && !window.Open(zem::PathToQt(file)))
        return FileProblem;
    return QApplication::exec();
}

/// Leaves the version where the editor looks for it, unless there is one.
int SetUp() {
    QSettings store(QStringLiteral("Veldt"), QStringLiteral("Veldt"));
    const QString key = QStringLiteral("Init/InstalledVer");
    if (!store.contains(key) || store.value(key).toString() == QLatin1String("no"))
        store.setValue(key, QStringLiteral("1.0"));
    store.sync();
    return store.status() == QSettings::NoError ? Success : FileProblem;
}

int Run(int argc, char** argv) {
    CLI::App app("Plays text adventures in the Kel script language.", "veldt");
    app.set_version_flag("--version", "Veldt 1.0");
    zem::play::TerminalOptions options;
    std::string lines;
    bool isText = false;
    CLI::Option* file = app.add_option("FILE", options.file, "the game to play");
    bool isSetUp = false;
    app.add_flag("--set-up", isSetUp, "tell the editor, for this user, that games can be played");
    CLI::Option* text = app.add_flag("--text", isText, "play in the terminal; no display is needed");
    text->needs(file);
    app.add_option("--seed", options.seed, "where chance begins; the same seed plays the same game")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str()
        ->needs(text);
    CLI::Option* linesOption =
        app.add_option("--lines", lines,
                       "print the transcript of a file of lines (\"> line\", \"< answer\", \"@ seconds\"); - "
                       "is standard input");
    linesOption->needs(text);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, std::cout, std::cerr) == 0 ? Success : WrongUsage;
    }
    if (isSetUp)
        return SetUp();
    if (!isText)
        return PlayInWindow(argc, argv, options.file);
    if (linesOption->count() > 0)
        options.linesFile = lines;
    return zem::play::PlayInTerminal(options, std::cin, std::cout, std::cerr);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "veldt: %s\n", error.what());
        return FileProblem;
    }
}
