#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

/// The cases of the checks in tests/data/problems, a file for each family:
///
///     A10 what the case is about
///     define room <Garden>
///       north <hall>
///     end define
///     > error | room Garden, exit north | "hall" is written "Hall" elsewhere ...
///     + Change to Hall | north <Hall>
///
/// The first line of a case has the id of a check; the game's text follows. It needs neither a game block nor
/// the room that one names: a game without "define game" gets one that begins in the room Hall, and a game
/// without that room gets it, as its last block. "beside NAME" begins a file beside the game.
///
/// A line ">" is a problem that this check must find (level | place | text, or "line N" in place of the place
/// for what stands only in the file); no others may come from it, so that a case without ">" is a neighbour
/// that is no fault. Behind a problem, "+ BUTTON | LINE" is a fix after which the saved game has this line,
/// "- BUTTON | LINE" one after which it has it no longer. Problems stand in the order of the game. Lines that
/// begin with "#" at the beginning of a file, and empty lines between cases, do not count; an empty line in
/// a game is written as a single ".".
namespace zem::test {

struct FixCase {
    bool hasLine = true; // or must not have it any longer
    std::string button;
    std::string line;
};

struct ExpectedProblem {
    std::string words; // level | place | text
    std::vector<FixCase> fixes;
};

struct ProblemCase {
    std::string file;
    std::string id;
    std::string title;
    std::string game;
    std::map<std::string, std::string> beside;
    std::vector<ExpectedProblem> problems;
};

inline std::vector<ProblemCase> ProblemCasesIn(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::vector<ProblemCase> cases;
    std::string* text = nullptr; // that lines go to; null between cases
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || (text == nullptr && line[0] == '#')) {
            text = nullptr;
            continue;
        }
        if (text == nullptr) {
            cases.push_back({path.filename().string(), line.substr(0, 3), line, "", {}, {}});
            text = &cases.back().game;
            continue;
        }
        ProblemCase& one = cases.back();
        if (line.starts_with("> ")) {
            one.problems.push_back({line.substr(2), {}});
        } else if (line.starts_with("+ ") || line.starts_with("- ")) {
            const std::size_t bar = line.find(" | ");
            if (bar == std::string::npos || one.problems.empty())
                throw std::runtime_error(one.file + ": no fix of a problem: " + line);
            one.problems.back().fixes.push_back(
                {line[0] == '+', line.substr(2, bar - 2), line.substr(bar + 3)});
        } else if (line.starts_with("beside ")) {
            text = &one.beside[line.substr(7)];
        } else {
            *text += (line == "." ? "" : line) + "\r\n";
        }
    }
    return cases;
}

} // namespace zem::test
