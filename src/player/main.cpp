#include "player/TerminalPlay.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

namespace {

enum ExitStatus { Success = 0, FileProblem = 1, WrongUsage = 2 };

int Run(int argc, char** argv) {
    CLI::App app("Plays text adventures in the Kel script language.", "veldt");
    app.set_version_flag("--version", "Veldt 1.0");
    zem::play::TerminalOptions options;
    std::string lines;
    bool isText = false;
    app.add_option("FILE", options.file, "the game to play")->required();
    app.add_flag("--text", isText, "play in the terminal; no display is needed");
    app.add_option("--seed", options.seed, "where chance begins; the same seed plays the same game")
        ->capture_default_str();
    CLI::Option* linesOption =
        app.add_option("--lines", lines,
                       "print the transcript of a file of lines (\"> line\", \"< answer\", \"@ seconds\"); - "
                       "is standard input");
    linesOption->needs(app.get_option("--text"));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, std::cout, std::cerr) == 0 ? Success : WrongUsage;
    }
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
