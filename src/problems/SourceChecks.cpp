// What stands in the file and not in the game that was read from it: a save drops it, or makes something else
// of it.
#include "base/LineText.h"
#include "base/TextFile.h"
#include "model/Texts.h"
#include "problems/Checks.h"
#include "problems/Directions.h"
#include "problems/Fixes.h"
#include "problems/ReadAgain.h"
#include "readback/ReadBack.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace zem::problems {

namespace {

/// A sentence of a remark, which begins with a small letter and has no full stop.
std::string Sentence(std::string text) {
    if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    return text + '.';
}

/// What one line of a file should be.
struct FileRepair {
    Problem* problem;
    std::size_t line;
    std::string text;
};

class SourceSearch {
public:
    SourceSearch(const CheckedGame& game, Findings& findings)
        : game_(game),
          source_(*game.Source()),
          findings_(findings) {
        int entry = 0;
        for (const ItemEntry& item : game.Game().Items) {
            items_.Add(item.Name);
            itemEntries_.emplace(Lower(item.Name), ++entry);
        }
    }

    void Run() {
        for (const LoadRemark& remark : source_.inspection.remarks)
            AddRemark(remark);
        FindEmptyExits();
        std::size_t outside = 0;
        std::size_t firstOutside = 0;
        for (const LostText& lost : source_.inspection.lost)
            if (lost.kind != LostTextKind::OutsideBlocks)
                AddLost(lost);
            else if (outside++ == 0)
                firstOutside = lost.line;
        if (outside > 0)
            findings_.AddAtLine("S12", firstOutside,
                                Count(outside, "line stands", "lines stand") +
                                    " outside of all blocks: nothing reads them, and a save drops them.");
        if (const std::size_t comments = source_.inspection.dropped.comments; comments > 0)
            findings_.Add("S11", {},
                          Count(comments, "comment is", "comments are") +
                              " dropped by a save: only those in scripts are kept.");
    }

private:
    /// Exits of rooms whose brackets are empty: the game that was read has no trace of them.
    void FindEmptyExits() {
        if (source_.bytes.find("<>") == std::string::npos)
            return;
        bool isInRoom = false;
        std::size_t number = 0;
        for (std::string_view bytes = source_.bytes; !bytes.empty();) {
            const std::string_view line = Trim(TakeLine(bytes));
            ++number;
            if (BeginsWith(line, "define "))
                isInRoom = BeginsWith(line, "define room ");
            const std::string_view word = line.substr(0, line.find(' '));
            if (isInRoom && line.size() == word.size() + 3 && line.ends_with(" <>") &&
                (IsDirection(word) || EqualIgnoringCase(word, "place")))
                findings_.AddAtLine("M06", number,
                                    "The brackets of " + QuoteShortly(word) +
                                        " are empty, so this leads nowhere, and a save drops it.");
        }
    }

    static std::string Count(std::size_t count, const char* one, const char* several) {
        return std::to_string(count) + ' ' + (count == 1 ? one : several);
    }

    /// Offers to read the file with a repaired line. When the game is what comes out of that already, the
    /// problem is no longer one.
    void AddWithRepair(const char* id, std::size_t line, const std::string& text, const std::string& repaired,
                       Level level) {
        if (!repaired.empty() && IsRepaired(line, repaired))
            return;
        Problem& problem = findings_.AddAtLine(id, line, text);
        problem.level = level;
        if (!repaired.empty())
            problem.fixes = {
                ChangeFileLine(ChangeTo(ShowShortly(repaired)), game_.Input().source, line, repaired)};
    }

    bool IsRepaired(std::size_t line, const std::string& text) {
        constexpr int MostReadings = 5; // each reads the whole file
        if (!isAsRead_) {
            const auto read = ReadWithLine(source_, game_.Game(), 0, {});
            isAsRead_ = !read || SameGame(*read, game_.Game());
        }
        if (*isAsRead_ || ++readings_ > MostReadings)
            return false;
        const auto repaired = ReadWithLine(source_, game_.Game(), line, text);
        return repaired && SameGame(*repaired, game_.Game());
    }

    /// FileLine for who asks for many.
    std::string_view LineOf(std::size_t line) {
        if (lines_.empty())
            for (std::string_view bytes = source_.bytes; !bytes.empty();)
                lines_.push_back(Trim(TakeLine(bytes)));
        return line == 0 || line > lines_.size() ? std::string_view() : lines_[line - 1];
    }

    void AddRemark(const LoadRemark& remark) {
        const std::string text = Sentence(remark.text);
        const std::string line(LineOf(remark.line));
        switch (remark.kind) {
        case RemarkKind::Encoding:
            findings_.AddAtLine("T01", remark.line, text);
            break;
        case RemarkKind::NoGame:
            findings_.AddAtLine("S06", remark.line, text);
            break;
        case RemarkKind::MergeMark:
            findings_.AddAtLine("S15", remark.line, text);
            break;
        case RemarkKind::GameNotRead:
            AddWithRepair("S06", remark.line, text, "define game" + line.substr(line.find_first_of(" <", 8)),
                          Level::Error);
            break;
        case RemarkKind::SecondGame:
            findings_.AddAtLine("S13", remark.line, text);
            break;
        case RemarkKind::ReadAndKept:
            AddKept(remark, line);
            break;
        case RemarkKind::OnlyKept:
            AddWithRepair("S18", remark.line, text, WithBlank(line), Level::Error);
            break;
        case RemarkKind::ThingOutside:
            findings_.AddAtLine("S17", remark.line, text).level = Level::Warning;
            break;
        case RemarkKind::BlockInRoom:
            AddWithRepair("S17", remark.line, text, WithNearestThing(line), Level::Error);
            break;
        case RemarkKind::BlockInThing:
            findings_.AddAtLine("S17", remark.line, text);
            break;
        }
    }

    /// "define room<Hall>" as it must be written.
    static std::string WithBlank(const std::string& line) {
        const std::size_t open = line.find('<');
        const std::string head = Lower(Trim(std::string_view(line).substr(0, open)));
        const std::string kind(Trim(std::string_view(head).substr(std::string_view("define").size())));
        return "define " + kind + (open == std::string::npos ? "" : ' ' + line.substr(open));
    }

    void AddKept(const LoadRemark& remark, const std::string& line) {
        const std::string text = Sentence(remark.text);
        if (!EqualIgnoringCase(line, "define synonyms")) {
            AddWithRepair("S18", remark.line, text, WithBlank(line), Level::Error);
            return;
        }
        // The synonyms were read; what is kept of them besides would be added to the file by every save.
        const std::string& blocks = *game_.Game().UnknownBlocks;
        const std::size_t begin = blocks.find(line + "\r\n");
        const std::size_t end = blocks.find("end define\r\n", begin);
        if (begin == std::string::npos || end == std::string::npos)
            return;
        const std::string block =
            blocks.substr(begin, end + std::string_view("end define\r\n\r\n").size() - begin);
        Problem& problem = findings_.AddAtLine("S06", remark.line, text);
        problem.fixes = {ChangeGame("Keep them once", [block](GameModel& game) {
            const std::size_t at = game.UnknownBlocks->find(block);
            if (at != std::string::npos)
                game.UnknownBlocks.Edit().erase(at, block.size());
        })};
        problem.fixes.front().needsNoChoice = true;
    }

    /// "define objekt <lamp>" with the kind that is meant; empty when none is near.
    static std::string WithNearestThing(const std::string& line) {
        const std::size_t begin = std::string_view("define ").size();
        const std::size_t end = std::min(line.find_first_of(" <", begin), line.size());
        const std::string_view kind = std::string_view(line).substr(begin, end - begin);
        for (const std::string_view known : {std::string_view("object"), std::string_view("character")})
            if (LettersApart(known, kind, 2) <= 2)
                return "define " + std::string(known) + ' ' +
                       std::string(Trim(std::string_view(line).substr(end)));
        return {};
    }

    void AddLost(const LostText& lost) {
        const std::string shown = QuoteShortly(lost.text);
        switch (lost.kind) {
        case LostTextKind::BehindExit:
            findings_.AddAtLine("S05", lost.line,
                                "The exit leads to a room, so " + shown +
                                    " never runs, and a save drops it.");
            break;
        case LostTextKind::SecondLine:
            findings_.AddAtLine("S07", lost.line,
                                "A later line " + shown +
                                    " takes the place of this one, and a save drops this one.");
            break;
        case LostTextKind::MenuLine:
            findings_.AddAtLine("S08", lost.line, "Menus have no line " + shown + ", and a save drops it.");
            break;
        case LostTextKind::OutsideBrackets:
            AddOutside(lost);
            break;
        case LostTextKind::StartItem:
            AddStartItem(lost);
            break;
        case LostTextKind::OutsideBlocks:
            break;
        }
    }

    void AddOutside(const LostText& lost) {
        const std::string line(LineOf(lost.line));
        const std::size_t open = line.find('<');
        const std::size_t close = line.find('>', open);
        std::string repaired;
        if (close != std::string::npos) {
            const std::size_t before = line.rfind(lost.text, open);
            const std::size_t behind = line.find(lost.text, close);
            if (before != std::string::npos && before + lost.text.size() <= open)
                repaired = line.substr(0, before) + '<' + lost.text + line.substr(open + 1);
            else if (behind != std::string::npos && lost.text.find('<') == std::string::npos)
                repaired =
                    line.substr(0, close) + line.substr(close + 1, line.find_last_not_of("> ") - close) + '>';
        }
        AddWithRepair("S16", lost.line,
                      QuoteShortly(lost.text) +
                          " stands outside of the brackets, so it is not read, and a save drops it.",
                      repaired, Level::Warning);
    }

    /// The entry of an item by its name, whatever its capitals; 0 for none.
    int ItemOf(std::string_view name) const {
        const auto found = itemEntries_.find(Lower(name));
        return found == itemEntries_.end() ? 0 : found->second;
    }

    bool IsStartItem(std::string_view name) const {
        const int entry = ItemOf(name);
        return entry != 0 && game_.Game().Items[entry].IsStartItem;
    }

    static Fix Carry(std::string button, std::vector<std::string> names) {
        return ChangeGame(std::move(button), [names = std::move(names)](GameModel& game) {
            for (int entry = 1; entry <= game.Items.Count(); ++entry)
                for (const std::string& name : names)
                    if (EqualIgnoringCase(game.Items[entry].Name, name))
                        game.Items.Edit(entry).IsStartItem = true;
        });
    }

    void AddStartItem(const LostText& lost) {
        if (ItemOf(lost.text) != 0)
            return;
        std::vector<std::string> known;
        bool isAllCarried = true;
        for (const std::string_view piece : SplitAt(lost.text, ";"))
            if (const std::string_view name = Trim(piece); ItemOf(name) != 0) {
                known.emplace_back(name);
                isAllCarried = isAllCarried && IsStartItem(name);
            }
        if (!known.empty()) {
            if (isAllCarried)
                return;
            Problem& problem =
                findings_.AddAtLine("S04", lost.line,
                                    "Start items stand between commas: " + QuoteShortly(lost.text) +
                                        " is taken for one item, and there is none.");
            problem.fixes = {Carry("Let the player carry them", known)};
            problem.fixes.front().needsNoChoice = true;
            return;
        }
        const std::string_view nearest = items_.Nearest(lost.text);
        if (!nearest.empty() && IsStartItem(nearest))
            return;
        Problem& problem = findings_.AddAtLine(
            "S09", lost.line,
            QuoteShortly(lost.text) + " is no item, so the player does not have it at the start.");
        if (!nearest.empty())
            problem.fixes.push_back(Carry(ChangeTo(nearest), {std::string(nearest)}));
        if (lost.text.find_first_of(";,{}") == std::string::npos)
            problem.fixes.push_back(ChangeGame("Add it to the items", [name = lost.text](GameModel& game) {
                game.Items.Append({name, true});
            }));
    }

    const CheckedGame& game_;
    const SourceFile& source_;
    Findings& findings_;
    NameSet items_;
    std::unordered_map<std::string, int> itemEntries_; // by their names in small letters
    std::vector<std::string_view> lines_;              // of the file, once one is asked for
    std::optional<bool> isAsRead_;                     // whether the game is what the file holds
    int readings_ = 0;
};

void FindInSource(const CheckedGame& game, Findings& findings) {
    if (game.Source() != nullptr)
        SourceSearch(game, findings).Run();
}

/// Scripts of exits that lead to rooms, which files do not have but forms may leave behind.
void FindLeftScripts(const CheckedGame& game, Findings& findings) {
    int number = 0;
    for (const Room& room : game.Game().Rooms) {
        ++number;
        ForEachField<Room>([&](const auto& field) {
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(room.*field.member)>,
                                         Shared<ScriptPair>>) {
                const ScriptPair& pair = *(room.*field.member);
                const bool mayHaveScript = field.id == FieldId::RoomOut || pair.Key == ActionExit;
                if (mayHaveScript || pair.Script.empty() || pair.Key.empty())
                    return;
                const Place script =
                    Place::Of({{FieldId::GameRooms, number}, {field.id, 0}}, FieldId::PairScript);
                findings
                    .Add("S05", script,
                         "The exit leads to a room, so its script never runs, and a save drops it.")
                    .fixes = {SetField("Remove it", script, pair.Script, "")};
            }
        });
    }
}

void FindLeftovers(const CheckedGame& game, Findings& findings) {
    FindInSource(game, findings);
    FindLeftScripts(game, findings);
}

/// Whether a line of a text, a script or any field would be more than a line of it in a file.
bool HasMarkedLine(std::string_view text, bool isScript) {
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (BeginsWith(line, "define") || BeginsWith(line, "end define") || BeginsWith(line, "!include") ||
            line.starts_with(' ') || line.find('\t') != std::string_view::npos)
            return true;
        if (isScript && (line.ends_with("__") || BeginsWith(line, "else")))
            return true;
    }
    return false;
}

/// Whether lines that are kept as they are come back as something else. What they may mean only the reader
/// knows, so they are written and read, and nothing else is.
bool HasLostRawLines(const GameModel& game) {
    GameModel raw;
    raw.UnknownBlocks = game.UnknownBlocks;
    raw.GameMiscTags = game.GameMiscTags;
    const auto addThings = [](const List<Thing>& things, List<Thing>& kept) {
        for (const Thing& thing : things) {
            if (thing.MiscTags.empty())
                continue;
            Thing& copy = kept.Append();
            copy.Name = "t";
            copy.MiscTags = thing.MiscTags;
        }
    };
    for (const Room& room : game.Rooms) {
        Room kept;
        kept.MiscTags = room.MiscTags;
        addThings(room.Characters, kept.Characters);
        addThings(room.Objects, kept.Objects);
        if (kept.MiscTags.empty() && kept.Characters.IsEmpty() && kept.Objects.IsEmpty())
            continue;
        kept.Name = "r" + std::to_string(raw.Rooms.Count());
        raw.Rooms.Append(kept);
    }
    return !ReadBack(raw, GameFile(raw), 1).empty();
}

/// Whether a text could come to something else in a file. Most texts have none of the signs, and reading a
/// whole game back takes its time.
bool MayBeLost(const Place& place, FieldUse use, const std::string& text) {
    static constexpr auto IsSign = [] {
        std::array<bool, 256> signs{};
        for (const char sign : std::string_view("!<>{}\r\n\t,;="))
            signs[static_cast<unsigned char>(sign)] = true;
        return signs;
    }();
    const bool hasSign =
        std::any_of(text.begin(), text.end(), [](char c) { return IsSign[static_cast<unsigned char>(c)]; });
    if (!hasSign && text.front() != ' ' && text.back() != ' ' && text.back() != '_' &&
        Lower(text.front()) != 'd' && Lower(text.front()) != 'e')
        return false;
    if (text.find("!include") != std::string::npos)
        return true; // it counts on every line of a file, wherever that stands
    if (use.kind == FieldKind::RawLines)
        return false;
    if (place.field == FieldId::TextText)
        return HasMarkedLine(text, false);
    if (place.field == FieldId::ProcedureScript && HasMarkedLine(text, true))
        return true;
    const auto has = [&](char sign) { return text.find(sign) != std::string::npos; };
    const bool hasLines = has('\r') || has('\n') || has('\t');
    const bool hasBraces = has('{') || has('}');
    const bool isMarked = BeginsWith(text, "define") || BeginsWith(text, "end define") ||
                          BeginsWith(text, "!include") || text.ends_with("__") || text.starts_with(' ') ||
                          text.ends_with(' ');
    if (use.kind == FieldKind::Script)
        return hasBraces || isMarked || text.starts_with('<') || has('\t') ||
               (hasLines && place.field != FieldId::ProcedureScript);
    return hasLines || hasBraces || isMarked || text.find_first_of("<>") != std::string::npos ||
           ((use.kind == FieldKind::Name || use.kind == FieldKind::Words ||
             use.kind == FieldKind::Definition) &&
            text.find_first_of(",;=") != std::string::npos);
}

/// The sentence without the place in front of it, which is told beside it.
std::string WithoutPlace(const std::string& text) {
    const std::size_t colon = text.find(": ");
    return colon == std::string::npos ? text : text.substr(colon + 2);
}

void FindUnsavable(const CheckedGame& game, Findings& findings) {
    bool mayBeLost = HasLostRawLines(game.Game());
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        mayBeLost = mayBeLost || (place.field != FieldId::ErrorDescription && MayBeLost(place, use, text));
    });
    if (!mayBeLost)
        return;
    for (const LostPlace& lost : ReadBack(game.Game(), GameFile(game.Game())))
        findings.Add("S14", lost.place,
                     "This would not come back from a save: " + WithoutPlace(lost.text) + '.');
}

} // namespace

std::span<const Check> SourceChecks() {
    static constexpr Check Rows[] = {
        {"M06", Level::Warning, "Exits that run an empty script", FindLeftovers},
        {"S04", Level::Warning, "Start items between semicolons", FindLeftovers},
        {"S05", Level::Hint, "Scripts behind exits to rooms", FindLeftovers},
        {"S06", Level::Error, "Blocks whose first line has capitals", FindLeftovers},
        {"S07", Level::Warning, "Lines of which only the last counts", FindLeftovers},
        {"S08", Level::Warning, "Lines that menus do not have", FindLeftovers},
        {"S09", Level::Warning, "Start items that are no items", FindLeftovers},
        {"S11", Level::Hint, "Comments that a save drops", FindLeftovers},
        {"S12", Level::Hint, "Lines outside of all blocks", FindLeftovers},
        {"S13", Level::Warning, "Several game blocks", FindLeftovers},
        {"S14", Level::Error, "What does not come back from a save", FindUnsavable},
        {"S15", Level::Error, "Marks of a merge that failed", FindLeftovers},
        {"S16", Level::Warning, "Letters outside of brackets", FindLeftovers},
        {"S17", Level::Error, "Blocks in the wrong place", FindLeftovers},
        {"S18", Level::Error, "Blocks whose first line is not understood", FindLeftovers},
    };
    return Rows;
}

} // namespace zem::problems
