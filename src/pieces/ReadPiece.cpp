#include "base/KelError.h"
#include "base/LineText.h"
#include "kel/ScriptLine.h"
#include "pieces/InternalNames.h"
#include "pieces/Piece.h"
#include "reader/InspectFile.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

namespace zem {

namespace {

/// Names the room of what stands in no room, and the procedure of what stands in no script, while a text is
/// read. No author can type it.
constexpr std::string_view Loose = "\x01";

struct NumberedLine {
    std::string_view text;
    std::size_t number = 0; // in the text, from 1
};

/// Sorts the lines of a text by what they belong to, and makes one game file of them.
class LineSorter {
public:
    explicit LineSorter(std::string_view text) : text_(text) {
        for (std::size_t begin = 0, number = 1; begin < text.size(); ++number) {
            const std::size_t end = std::min(text.find('\n', begin), text.size());
            std::string_view line = text.substr(begin, end - begin);
            if (line.ends_with('\r'))
                line.remove_suffix(1);
            lines_.push_back({line, number});
            begin = end + 1;
        }
    }

    std::string MakeFile() {
        RefuseSigns();
        Sort();
        int last = -1;
        ForEachInternalName(text_, [&](TextRange, int number) { last = std::max(last, number); });
        AddToFile("'ZEM-NIP <" + std::to_string(last + 1) + ">");
        AddBlock("define game <>", game_);
        if (!things_.empty())
            AddBlock("define room <" + std::string(Loose) + ">", things_);
        if (HasScript())
            AddBlock("define procedure <" + std::string(Loose) + ">", script_);
        for (const NumberedLine& line : blocks_)
            AddToFile(line.text, line.number);
        return std::move(file_);
    }

    /// The line of the text from which a line of the file was made; 0 for none.
    std::size_t LineOfText(std::size_t lineOfFile) const {
        return lineOfFile == 0 || lineOfFile > origins_.size() ? 0 : origins_[lineOfFile - 1];
    }
    std::string_view Line(std::size_t number) const { return lines_[number - 1].text; }

private:
    [[noreturn]] static void Refuse(const std::string& problem, const NumberedLine& line) {
        throw KelError(problem, line.number, line.text);
    }

    void RefuseSigns() const {
        for (const NumberedLine& line : lines_)
            for (const char c : line.text)
                if (static_cast<unsigned char>(c) < ' ' && c != '\t')
                    Refuse("the text holds a sign that no game can hold", line);
    }

    void Sort() {
        for (std::size_t k = 0; k < lines_.size();) {
            std::string_view line = lines_[k].text;
            line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
            if (BeginsWith(line, "define "))
                k = SortBlock(k, line);
            else if (BeginsWith(line, "end define"))
                Refuse("this ends a block whose begin is missing", lines_[k]);
            else if (Trim(line).empty() || BeginsWith(line, "'ZEM-NIP ") || BeginsWith(line, "!include "))
                ++k;
            else
                k = SortLine(k, line);
        }
    }

    /// @return  the line behind the block
    std::size_t SortBlock(std::size_t first, std::string_view firstLine) {
        int depth = 0;
        std::size_t k = first;
        for (; k < lines_.size(); ++k) {
            std::string_view line = lines_[k].text;
            line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
            depth += BeginsWith(line, "define") ? 1 : BeginsWith(line, "end define") ? -1 : 0;
            if (depth == 0)
                break;
        }
        if (k == lines_.size())
            Refuse("half a block: its \"end define\" is missing", lines_[first]);
        const auto begin = lines_.begin() + static_cast<std::ptrdiff_t>(first);
        const auto end = lines_.begin() + static_cast<std::ptrdiff_t>(k + 1);
        if (BeginsWith(firstLine, "define game "))
            game_.insert(game_.end(), begin + 1, end - 1);
        else if (BeginsWith(firstLine, "define object ") || BeginsWith(firstLine, "define character "))
            things_.insert(things_.end(), begin, end);
        else
            blocks_.insert(blocks_.end(), begin, end);
        return k + 1;
    }

    /// A line outside of blocks, with those that its braces hold together.
    std::size_t SortLine(std::size_t first, std::string_view line) {
        constexpr std::array<std::string_view, 5> OfGame = {"items ", "startitems ", "collectables ",
                                                            "command ", "use "};
        const bool isGame =
            std::any_of(OfGame.begin(), OfGame.end(), [&](auto word) { return BeginsWith(line, word); });
        std::ptrdiff_t depth = 0;
        std::size_t k = first;
        do {
            const std::string_view braced = lines_[k].text;
            depth += std::count(braced.begin(), braced.end(), '{');
            depth -= std::count(braced.begin(), braced.end(), '}');
            (isGame ? game_ : script_).push_back(lines_[k++]);
        } while (depth > 0 && k < lines_.size());
        if (depth > 0)
            Refuse("the \"{\" on this line is never closed", lines_[first]);
        return k;
    }

    /// Comments alone are no script: a file begins with some.
    bool HasScript() const {
        return std::any_of(script_.begin(), script_.end(),
                           [](const NumberedLine& line) { return !BeginsWith(line.text, "'"); });
    }

    void AddBlock(std::string_view firstLine, const std::vector<NumberedLine>& lines) {
        AddToFile(firstLine, lines.empty() ? 0 : lines.front().number);
        for (const NumberedLine& line : lines)
            AddToFile(line.text, line.number);
        AddToFile("end define", lines.empty() ? 0 : lines.back().number);
    }

    void AddToFile(std::string_view line, std::size_t number = 0) {
        file_.append(line).append("\r\n");
        origins_.push_back(number);
    }

    std::string_view text_;
    std::vector<NumberedLine> lines_;
    std::vector<NumberedLine> game_;
    std::vector<NumberedLine> things_;
    std::vector<NumberedLine> script_;
    std::vector<NumberedLine> blocks_;
    std::string file_;
    std::vector<std::size_t> origins_; // by line of the file
};

/// Refuses what loading such a file would drop without a word.
void RefuseLostText(const LineSorter& sorter, const std::string& file) {
    const FileInspection found = InspectFile(file);
    const auto refuse = [&](std::size_t lineOfFile, const std::string& problem) {
        const std::size_t number = sorter.LineOfText(lineOfFile);
        throw number == 0 ? KelError(problem) : KelError(problem, number, sorter.Line(number));
    };
    for (const LoadRemark& remark : found.remarks)
        if (remark.kind == RemarkKind::MergeMark || remark.kind == RemarkKind::OnlyKept ||
            remark.kind == RemarkKind::ReadAndKept || remark.kind == RemarkKind::GameNotRead ||
            remark.kind == RemarkKind::BlockInRoom)
            refuse(remark.line, remark.text);
    for (const LostText& lost : found.lost)
        if (lost.kind != LostTextKind::StartItem)
            refuse(lost.line, "a game would lose a part of this line: " + QuoteShortly(lost.text));
}

/// Whether a command or condition makes sense to the language, or may be one of an add-on.
bool IsKnownCall(const ScriptCall& call, std::string_view line, bool isCondition) {
    if (!call.rest.IsEmpty())
        return false;
    if (call.entry != nullptr)
        return call.hasParameter || call.entry->syntax.parts.empty() || isCondition;
    const std::string_view keyword = call.keyword.Of(line);
    return call.hasParameter && std::count(keyword.begin(), keyword.end(), ' ') < 3;
}

void RefuseUnlessScript(const std::string& line, const CommandLookup& commands) {
    if (Trim(line).empty() || BeginsWith(line, "'"))
        return;
    const ScriptLine parsed = TakeApart(line, commands);
    bool isKel = parsed.problem == LineProblem::None && !parsed.actions.empty();
    for (const ScriptCondition& condition : parsed.conditions)
        isKel = isKel && IsKnownCall(condition.call, line, true);
    for (const ScriptAction& action : parsed.actions)
        isKel = isKel && (action.IsIf() || IsKnownCall(action.call, line, false));
    if (!isKel)
        throw KelError(
            "this is no line of Kel: " + QuoteShortly(line) +
            (parsed.problem == LineProblem::None ? "" : " (" + std::string(Explain(parsed.problem)) + ")"));
}

/// Takes what stands in no record out of the records that carried it through the reader.
void TakeLoose(Piece& piece) {
    GameModel& game = piece.game;
    if (!game.Rooms.IsEmpty() && game.Rooms[1].Name == Loose) {
        piece.things = game.Rooms[1];
        piece.things.Name.clear();
        game.Rooms.Remove(1);
    }
    if (game.Procedures.IsEmpty() || game.Procedures[1].Name != Loose)
        return;
    std::string_view script = game.Procedures[1].Script;
    if (script.ends_with("\r\n"))
        script.remove_suffix(2);
    for (const std::string_view line : SplitAt(script, "\r\n"))
        piece.lines.emplace_back(line);
    game.Procedures.Remove(1);
}

/// The reader gives each game the standard texts, and reads an empty list of items as one without a name.
void RemoveWhatNobodyWrote(GameModel& game) {
    if (game.Items.Count() == 1 && game.Items[1].Name.empty())
        game.Items.Clear();
    for (int k = game.TextSections.Count(); k >= 1; --k)
        if (IsStandardText(game.TextSections[k].Name) && game.TextSections[k].Text.empty())
            game.TextSections.Remove(k);
}

} // namespace

Piece ReadPiece(std::string_view text, const GameModel& game, const CommandLookup& commands) {
    LineSorter sorter(text);
    const std::string file = sorter.MakeFile();
    Piece piece;
    piece.game.ErrorMessages = game.ErrorMessages;
    for (int k = 1; k <= game.ErrorMessages.Count(); ++k)
        piece.game.ErrorMessages.Edit(k).GameText.clear();
    try {
        ReadGame(piece.game, file);
    } catch (const KelError& error) {
        const std::size_t number = sorter.LineOfText(error.Line());
        throw number == 0 ? KelError(error.Problem())
                          : KelError(error.Problem(), number, sorter.Line(number));
    }
    TakeLoose(piece);
    for (const std::string& line : piece.lines)
        RefuseUnlessScript(line, commands);
    RefuseLostText(sorter, file);
    RemoveWhatNobodyWrote(piece.game);
    return piece;
}

} // namespace zem
