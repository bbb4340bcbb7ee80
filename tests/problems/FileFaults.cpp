// Faults that only a file can have.
#include "base/LineText.h"
#include "problems/Planting.h"
#include "problems/Seeder.h"

#include <algorithm>

namespace zem::test {

namespace {

/// Spoils one of the lines of the file that `accepts` wants.
bool SpoilFileLine(std::vector<std::string>& lines, Seeder& seeder, bool (*accepts)(const std::string&),
                   std::string (*spoil)(std::string)) {
    std::vector<std::size_t> all;
    for (std::size_t k = 0; k < lines.size(); ++k)
        if (accepts(lines[k]))
            all.push_back(k);
    if (all.empty())
        return false;
    std::string& line = lines[seeder.PickOf(all)];
    const std::string spoilt = spoil(line);
    const bool isOther = spoilt != line;
    line = spoilt;
    return isOther;
}

bool IsExitToRoom(const std::string& line) {
    return BeginsWith(line, "north <") || BeginsWith(line, "south <") || BeginsWith(line, "east <");
}

bool IsLook(const std::string& line) {
    return BeginsWith(line, "look <") && line.size() > 20;
}

} // namespace

std::vector<FaultKind> FileFaults() {
    using S = Seeder;
    using L = std::vector<std::string>;
    return {
        {"start items between semicolons", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder,
                 [](const std::string& l) {
                     return BeginsWith(l, "startitems ") && l.find(',') != std::string::npos;
                 },
                 [](std::string l) {
                     std::replace(l.begin(), l.end(), ',', ';');
                     return l;
                 });
         }},
        {"a misspelt keyword of a line", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(lines, seeder, IsLook,
                                  [](std::string l) { return With(l, "look", "lok"); });
         }},
        {"no blank behind a keyword", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(lines, seeder, IsExitToRoom,
                                  [](std::string l) { return With(l, " <", "<"); });
         }},
        {"letters before the bracket", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder,
                 [](const std::string& l) { return BeginsWith(l, "alias <") || BeginsWith(l, "prefix <"); },
                 [](std::string l) { return With(l, "<", "t<"); });
         }},
        {"a second description", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder, [](const std::string& l) { return BeginsWith(l, "indescription"); },
                 [](std::string l) { return l + "\r\nindescription <You float above>"; });
         }},
        {"a misspelt kind of block", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder, [](const std::string& l) { return BeginsWith(l, "define object"); },
                 [](std::string l) { return With(l, "object", "objekt"); });
         }},
        {"a block in capitals", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder, [](const std::string& l) { return l == "define synonyms"; },
                 [](std::string) { return std::string("Define Synonyms"); });
         }},
        {"a block without an end", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder, [](const std::string& l) { return l == "end define"; },
                 [](std::string) { return std::string(); });
         }},
        {"marks of a merge", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(lines, seeder, IsLook,
                                  [](std::string l) { return "<<<<<<< ours\r\n" + l; });
         }},
        {"a script behind an exit", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(lines, seeder, IsExitToRoom,
                                  [](std::string l) { return l + " msg <You go.>"; });
         }},
        {"a line that menus lack", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder, [](const std::string& l) { return BeginsWith(l, "choice <"); },
                 [](std::string l) { return With(l, "choice", "choise"); });
         }},
        {"a message of unknown name", nullptr,
         [](L& lines, S& seeder) {
             return SpoilFileLine(
                 lines, seeder, [](const std::string& l) { return BeginsWith(l, "error <"); },
                 [](std::string l) { return With(l, "<bad", "<bda"); });
         }},
    };
}

} // namespace zem::test
