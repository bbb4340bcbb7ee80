// What players type: the patterns of commands.
#include "base/LineText.h"
#include "play/Sentence.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zem::problems {

namespace {

/// Stands for what a player types for a variable: no game has such a word.
constexpr std::string_view AnyWord = "qzxjv";

/// One of the patterns between the ";" of a command.
struct Piece {
    int entry = 0;   // of the list of commands
    TextRange bytes; // of its text, without blanks around it
    std::string_view text;
    play::Pattern pattern;
    std::string example; // what a player could type
};

/// The commands of the game, or of one room.
struct CommandList {
    FieldId list;
    int room = 0; // 0 for those of the game
    std::vector<Piece> pieces;

    Place At(const Piece& piece) const {
        return room == 0 ? Place::Of({{list, piece.entry}}, FieldId::CommandPattern, piece.bytes)
                         : Place::Of({{FieldId::GameRooms, room}, {list, piece.entry}}, FieldId::PairKey,
                                     piece.bytes);
    }
};

std::string ExampleOf(std::string_view text) {
    std::string example(text);
    std::size_t shift = 0;
    ForEachVariable(text, [&](TextRange range, char sign) {
        if (sign != '#')
            return false;
        const std::size_t size = range.Size() + 2;
        example.replace(range.begin - 1 + shift, size, AnyWord);
        shift += AnyWord.size() - size;
        return true;
    });
    return example;
}

/// Calls visit(range) for the pieces between ";", without blanks around them.
template <class Visit>
void ForEachPiece(std::string_view text, Visit visit) {
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        visit(TrimmedRange(text, {begin, end}));
        begin = end + 1;
    }
}

void AddPieces(CommandList& list, int entry, std::string_view text, play::Names& names) {
    ForEachPiece(text, [&](TextRange range) {
        const std::string_view part = range.Of(text);
        std::vector<play::Pattern> patterns = play::ReadPatterns(names, part);
        Piece piece{entry, range, part, {}, ExampleOf(part)};
        if (!patterns.empty())
            piece.pattern = std::move(patterns.front());
        list.pieces.push_back(std::move(piece));
    });
}

std::vector<CommandList> CommandLists(const GameModel& game) {
    play::Names names; // takes its time to make
    std::vector<CommandList> lists = {{FieldId::GamePlayerCommands, 0, {}}};
    int entry = 0;
    for (const PlayerCommand& command : game.PlayerCommands)
        AddPieces(lists.front(), ++entry, command.Pattern, names);
    int number = 0;
    for (const Room& room : game.Rooms) {
        ++number;
        if (room.Commands.IsEmpty())
            continue;
        lists.push_back({FieldId::RoomCommands, number, {}});
        entry = 0;
        for (const ScriptPair& command : room.Commands)
            AddPieces(lists.back(), ++entry, command.Key, names);
    }
    return lists;
}

bool IsEmpty(const Piece& piece) {
    return piece.pattern.literals.empty();
}

/// The text of a list of pieces without one of them.
std::string WithoutPiece(std::string_view text, TextRange piece) {
    std::string rest;
    ForEachPiece(text, [&](TextRange range) {
        if (!(range == piece))
            rest.append(rest.empty() ? "" : "; ").append(range.Of(text));
    });
    return rest;
}

std::string_view WholeText(const GameModel& game, const CommandList& list, const Piece& piece) {
    return list.room == 0 ? std::string_view(game.PlayerCommands[piece.entry].Pattern)
                          : std::string_view(game.Rooms[list.room].Commands[piece.entry].Key);
}

void FindEmpty(const CheckedGame& game, const CommandList& list, const Piece& piece, Findings& findings) {
    if (!IsEmpty(piece))
        return;
    Place place = list.At(piece).WholeField();
    Problem& problem = findings.Add(
        "K01", place, "This command has an empty pattern, which nothing that a player types matches.");
    const std::string_view whole = WholeText(game.Game(), list, piece);
    const std::string rest = WithoutPiece(whole, piece.bytes);
    if (rest.empty()) {
        place.field = FieldId::None;
        problem.fixes = {RemoveRecord("Remove it", place)};
    } else {
        problem.fixes = {SetField("Remove the empty pattern", place, whole, rest)};
    }
}

/// The pattern with a "#" on the other side of the word that has only one.
std::string WithSecondSign(std::string_view text) {
    std::string mended(text);
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(' ', begin), text.size());
        const std::string_view word = text.substr(begin, end - begin);
        if (word.size() > 1 && std::count(word.begin(), word.end(), '#') == 1) {
            if (word.starts_with('#'))
                return mended.insert(end, "#");
            if (word.ends_with('#'))
                return mended.insert(begin, "#");
        }
        begin = end + 1;
    }
    return mended;
}

void FindOddSigns(const CommandList& list, const Piece& piece, Findings& findings) {
    if (std::count(piece.text.begin(), piece.text.end(), '#') % 2 == 0)
        return;
    Problem& problem = findings.Add("K02", list.At(piece),
                                    "In " + QuoteShortly(piece.text) +
                                        " a \"#\" has no second one, so players would have to type the sign "
                                        "itself: a variable stands between two.");
    const std::string mended = WithSecondSign(piece.text);
    if (mended != piece.text)
        problem.fixes = {ReplaceBytes(ChangeTo(mended), list.At(piece), piece.text, mended)};
}

void FindOddVariables(const CommandList& list, const Piece& piece, Findings& findings) {
    const play::Pattern& pattern = piece.pattern;
    bool areSideBySide = false;
    for (std::size_t k = 1; k < pattern.variables.size(); ++k)
        areSideBySide = areSideBySide || pattern.literals[k].empty();
    std::vector<play::Number> sorted = pattern.variables;
    std::sort(sorted.begin(), sorted.end());
    const bool isTwice = std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end();
    if (areSideBySide)
        findings.Add("K05", list.At(piece),
                     "In " + QuoteShortly(piece.text) +
                         " nothing stands between two variables, so the first takes a single letter.");
    else if (isTwice)
        findings.Add("K05", list.At(piece),
                     "In " + QuoteShortly(piece.text) +
                         " one variable stands twice, and keeps what was typed last.");
}

/// The words that replace the variables' examples go back to what the author wrote.
std::string WithVariables(std::string example, std::string_view pattern) {
    std::size_t from = 0;
    ForEachVariable(pattern, [&](TextRange range, char sign) {
        const std::size_t at = sign == '#' ? example.find(AnyWord, from) : std::string::npos;
        if (at != std::string::npos) {
            example.replace(at, AnyWord.size(), pattern.substr(range.begin - 1, range.Size() + 2));
            from = at + range.Size() + 2;
        }
        return sign == '#';
    });
    return example;
}

void FindReplacedWords(const CheckedGame& game, const CommandList& list, const Piece& piece,
                       const std::vector<play::SynonymRule>& rules, Findings& findings) {
    if (IsEmpty(piece) || rules.empty())
        return;
    const play::Sentence typed(piece.example);
    const play::Sentence replaced = play::ReplaceSynonyms(typed, rules);
    if (replaced.folded.text == typed.folded.text)
        return;
    const bool matches = std::any_of(list.pieces.begin(), list.pieces.end(), [&](const Piece& other) {
        return other.entry == piece.entry && !IsEmpty(other) &&
               play::MatchPattern(other.pattern, replaced).has_value();
    });
    if (matches)
        return;
    const std::string other = WithVariables(replaced.typed, piece.text);
    const std::string_view whole = WholeText(game.Game(), list, piece);
    findings
        .Add("K03", list.At(piece),
             "A synonym makes " + QuoteShortly(other) + " of " + QuoteShortly(piece.text) +
                 ": only those who type these very words are understood, other words for the same are not.")
        .fixes = {SetField("Add " + QuoteShortly(other), list.At(piece).WholeField(), whole,
                           std::string(whole) + "; " + other)};
}

/// Moves an entry of a list up to the place of an earlier one.
void MoveUp(RecordList auto& records, int from, int to) {
    if (from > records.Count() || to >= from)
        return;
    std::vector<typename std::remove_cvref_t<decltype(records)>::RecordType> all(records.begin(),
                                                                                 records.end());
    std::rotate(all.begin() + to - 1, all.begin() + from - 1, all.begin() + from);
    records.Assign(all);
}

Fix MoveUpBefore(const CommandList& list, int from, int to) {
    return ChangeGame("Move it up", [room = list.room, from, to](GameModel& game) {
        if (room == 0)
            MoveUp(game.PlayerCommands, from, to);
        else if (room <= game.Rooms.Count())
            MoveUp(game.Rooms.Edit(room).Commands, from, to);
    });
}

/// Patterns with a variable, which may take what other patterns are for, by the words that they begin with.
class Takers {
public:
    void Add(const Piece& piece) {
        const std::string& first = piece.pattern.literals.front();
        byFirst_[first].push_back({count_++, &piece});
        lengths_.insert(first.size());
    }

    /// The first one that takes what is typed for a pattern; null for none.
    const Piece* TakerOf(const Piece& piece, const play::Sentence& typed) const {
        const std::string_view text = typed.folded.text;
        Taker best;
        for (const std::size_t length : lengths_) {
            if (length > text.size())
                break;
            const auto found = byFirst_.find(std::string(text.substr(0, length)));
            if (found == byFirst_.end())
                continue;
            for (const Taker& taker : found->second) {
                if (best.piece != nullptr && taker.order > best.order)
                    break;
                if (Takes(*taker.piece, piece, typed))
                    best = taker;
            }
        }
        return best.piece;
    }

private:
    struct Taker {
        std::size_t order = 0;
        const Piece* piece = nullptr;
    };

    static bool Takes(const Piece& taker, const Piece& piece, const play::Sentence& typed) {
        return taker.entry != piece.entry && taker.pattern.literals != piece.pattern.literals &&
               play::MatchPattern(taker.pattern, typed).has_value();
    }

    std::unordered_map<std::string, std::vector<Taker>> byFirst_;
    std::set<std::size_t> lengths_; // of the keys
    std::size_t count_ = 0;
};

void FindTaken(const CommandList& list, Findings& findings) {
    Takers takers;
    for (const Piece& piece : list.pieces) {
        if (IsEmpty(piece))
            continue;
        if (const Piece* taker = takers.TakerOf(piece, play::Sentence(piece.example)))
            findings
                .Add("K04", list.At(piece),
                     QuoteShortly(taker->text) + " stands before it and takes " + QuoteShortly(piece.text) +
                         ", too, so this pattern never counts.")
                .fixes = {MoveUpBefore(list, piece.entry, taker->entry)};
        if (!piece.pattern.variables.empty())
            takers.Add(piece);
    }
}

/// The direction that a player means by these words; empty for none.
std::string_view DirectionIn(std::string_view folded) {
    for (const std::string_view verb : {"go ", "walk ", "run "})
        if (folded.starts_with(verb))
            folded.remove_prefix(verb.size());
    constexpr std::pair<std::string_view, std::string_view> Short[] = {
        {"n", "north"},      {"s", "south"},      {"e", "east"},       {"w", "west"},
        {"ne", "northeast"}, {"nw", "northwest"}, {"se", "southeast"}, {"sw", "southwest"},
        {"o", "out"},        {"exit", "out"},     {"leave", "out"}};
    for (const auto& [word, direction] : Short)
        if (folded == word || folded == direction)
            return direction;
    return {};
}

bool HasExit(const Room& room, std::string_view direction) {
    if (direction == "out")
        return !room.Out->Key.empty();
    return std::any_of(std::begin(CompassExits), std::end(CompassExits), [&](const CompassExit& exit) {
        return exit.direction == direction && !(room.*exit.exit)->Key.empty();
    });
}

void FindDirections(const CheckedGame& game, const CommandList& list, const Piece& piece,
                    Findings& findings) {
    const std::string_view direction = DirectionIn(play::Fold(piece.text));
    if (direction.empty() || (list.room != 0 && !HasExit(game.Game().Rooms[list.room], direction)))
        return;
    findings.Add("K06", list.At(piece),
                 "The command takes " + QuoteShortly(piece.text) + ", so who types this does not go " +
                     std::string(direction) + (list.room == 0 ? " in any room." : "."));
}

void FindInPatterns(const CheckedGame& game, Findings& findings) {
    std::vector<play::SynonymRule> rules;
    const auto addRules = [&](const GameModel& model) {
        for (const SynonymEntry& synonym : model.Synonyms)
            if (auto rule = play::ReadSynonym(synonym.Words, synonym.ConvertTo))
                rules.push_back(*std::move(rule));
    };
    addRules(game.Game());
    for (const GameModel& library : game.LibraryGames())
        addRules(library);
    for (const CommandList& list : CommandLists(game.Game())) {
        for (const Piece& piece : list.pieces) {
            FindEmpty(game, list, piece, findings);
            FindOddSigns(list, piece, findings);
            FindOddVariables(list, piece, findings);
            FindReplacedWords(game, list, piece, rules, findings);
            FindDirections(game, list, piece, findings);
        }
        FindTaken(list, findings);
    }
}

} // namespace

std::span<const Check> PatternChecks() {
    static constexpr Check Rows[] = {
        {"K01", Level::Error, "Empty patterns", FindInPatterns},
        {"K02", Level::Error, "Patterns with an odd number of \"#\"", FindInPatterns},
        {"K03", Level::Hint, "Patterns that a synonym changes", FindInPatterns},
        {"K04", Level::Warning, "Patterns behind others that take them", FindInPatterns},
        {"K05", Level::Warning, "Variables in a pattern that get in each other's way", FindInPatterns},
        {"K06", Level::Hint, "Patterns that take the place of a direction", FindInPatterns},
    };
    return Rows;
}

} // namespace zem::problems
