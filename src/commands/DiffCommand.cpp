// The command that compares two versions of a game.
#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "commands/DiffPages.h"
#include "merge/Describe.h"
#include "merge/MarkedText.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

namespace zem {

namespace {

using merge::Difference;
using merge::DifferenceKind;
using merge::GameDiff;
using merge::MarkedPiece;

struct DiffArguments {
    std::string before;
    std::string after;
    bool asHtml = false;
    bool asJson = false;
};

std::string Marked(const std::vector<MarkedPiece>& pieces) {
    std::string text;
    for (const MarkedPiece& piece : pieces)
        switch (piece.kind) {
        case MarkedPiece::Same:
            text += piece.text;
            break;
        case MarkedPiece::Removed:
            text += "[-" + piece.text + "-]";
            break;
        case MarkedPiece::Added:
            text += "{+" + piece.text + "+}";
            break;
        case MarkedPiece::LeftOut:
            text += " ...";
            break;
        }
    return text;
}

/// What stands on several lines as one line.
std::string OnOneLine(std::string_view lines) {
    std::string text;
    for (const std::string_view line : SplitAt(lines, "\r\n")) {
        const std::string_view words = Trim(line);
        if (!words.empty())
            text.append(text.empty() ? "" : " | ").append(words);
    }
    return text;
}

/// Whether the line came, or went, as a whole.
bool IsWhole(const merge::MarkedLine& line, MarkedPiece::Kind kind) {
    return line.pieces.size() == 1 && line.pieces.front().kind == kind;
}

/// Lines that came together, or went together, as one: an edit is to be seen at a glance.
std::vector<merge::MarkedLine> Gathered(const std::vector<merge::MarkedLine>& lines) {
    std::vector<merge::MarkedLine> gathered;
    for (const merge::MarkedLine& line : lines) {
        const bool goesOn = !gathered.empty() && line.pieces.size() == 1 &&
                            line.pieces.front().kind != MarkedPiece::Same &&
                            IsWhole(gathered.back(), line.pieces.front().kind);
        if (goesOn)
            gathered.back().pieces.front().text += "\r\n" + line.pieces.front().text;
        else
            gathered.push_back(line);
    }
    return gathered;
}

/// The lines of a difference in Windows-1252.
/// @param where   what begins them
std::string LinesOf(const GameDiff& diff, const Difference& difference, const std::string& where,
                    std::size_t indent) {
    const std::string start = std::string(indent, ' ');
    switch (difference.kind) {
    case DifferenceKind::Added: {
        const std::string holds = OnOneLine(merge::RecordText(
            diff.After(), difference.after, 0, [&](int record) { return diff.IsMovedIn(record); }));
        return start + "+ " + where + "\r\n" + (holds.empty() ? "" : start + "    " + holds + "\r\n");
    }
    case DifferenceKind::Removed:
        return start + "- " + where + "\r\n";
    case DifferenceKind::Moved:
    case DifferenceKind::Reordered:
        return start + where + ": " + MovedWords(diff, difference) + "\r\n";
    case DifferenceKind::Changed:
        break;
    }
    std::string text;
    const bool hasLines = (difference.from + difference.to).find("\r\n") != std::string::npos;
    for (const merge::MarkedLine& line : Gathered(merge::MarkChanges(difference.from, difference.to))) {
        text += start + where + (hasLines ? ", line " + std::to_string(line.line) : "");
        const std::string marked = Marked(line.pieces);
        text += ": " + (marked.find("\r\n") == std::string::npos ? marked : OnOneLine(marked)) + "\r\n";
    }
    return text.empty() ? start + where + ": other empty lines\r\n" : text;
}

/// One difference of a record is told on one line; several stand below the record.
std::string AsText(const GameDiff& diff) {
    std::string text;
    const std::vector<Difference>& differences = diff.Differences();
    for (std::size_t first = 0; first < differences.size();) {
        const std::string group = diff.Group(differences[first]);
        std::size_t last = first + 1;
        while (last < differences.size() && diff.Group(differences[last]) == group)
            ++last;
        const bool isAlone = last - first == 1;
        if (!isAlone)
            text += group + "\r\n";
        for (; first < last; ++first) {
            const Difference& difference = differences[first];
            const std::string where = isAlone ? diff.Where(difference) : diff.WhereInGroup(difference);
            text += LinesOf(diff, difference, where.empty() ? group : where, isAlone ? 0 : 2);
        }
    }
    return text;
}

/// In UTF-8, with the line ends of a terminal.
std::string ToUtf8Lines(std::string_view text) {
    std::string lines = ToUtf8(text);
    std::erase(lines, '\r');
    return lines;
}

int Diff(CommandContext& context, const DiffArguments& arguments) {
    GameModel before;
    GameModel after;
    bool isRead = context.LoadVersion(before, arguments.before);
    isRead = context.LoadVersion(after, arguments.after) && isRead;
    if (!isRead)
        return Trouble;
    const GameDiff diff(before, after);
    const DiffNames names{arguments.before, arguments.after};
    const std::string page = arguments.asHtml   ? DiffAsHtml(diff, names)
                             : arguments.asJson ? DiffAsJson(diff, names)
                                                : ToUtf8Lines(AsText(diff));
    if (context.Write(page, "-") != Success)
        return Trouble;
    return diff.Differences().empty() ? AsExpected : Different;
}

} // namespace

void AddDiffCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* diff =
        app.add_subcommand("diff", "tell what differs between the games A and B, by room and field; "
                                   "status 0 for nothing, 1 for something, 2 for trouble");
    auto arguments = std::make_shared<DiffArguments>();
    diff->add_option("A", arguments->before, "the version before")->required();
    diff->add_option("B", arguments->after, "the version after")->required();
    CLI::Option* html = diff->add_flag("--html", arguments->asHtml, "as a web page");
    diff->add_flag("--json", arguments->asJson, "as JSON, for programs")->excludes(html);
    diff->final_callback([&context, &status, arguments] { status = Diff(context, *arguments); });
}

} // namespace zem
