// Lines that no reader understood, and that were meant to be understood.
#include "base/LineText.h"
#include "map/MapGraph.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/ReadAgain.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

namespace zem::problems {

namespace {

using Words = std::span<const std::string_view>;

constexpr std::string_view GameWords[] = {
    "start",        "game author", "game version", "game copyright",   "game info",
    "startscript",  "beforeturn",  "afterturn",    "description",      "command",
    "use",          "items",       "startitems",   "default fontname", "default fontsize",
    "collectables", "error",       "nodebug",      "kel-version",      "possitems"};
constexpr std::string_view RoomWords[] = {"alias",     "look",  "out",        "north",     "south",
                                          "east",      "west",  "northeast",  "northwest", "southeast",
                                          "southwest", "place", "prefix",     "script",    "indescription",
                                          "command",   "use",   "description"};
constexpr std::string_view CharacterWords[] = {"look", "speak", "gender", "prefix",   "suffix",
                                               "give", "use",   "hidden", "invisible"};
constexpr std::string_view ObjectWords[] = {"look", "take", "prefix", "suffix", "use", "hidden", "invisible"};

/// Words that stand alone, in small letters.
bool IsMark(std::string_view word) {
    return word == "hidden" || word == "invisible" || word == "nodebug";
}

/// Where lines are kept that were not understood.
struct RawField {
    Place place;
    std::string_view text;
    Words words;      // that are known there
    const char* what; // "a room"
};

/// The part of a line that should be its keyword, and what follows it.
struct Head {
    std::string_view word;
    std::string_view rest; // without blanks around it
    bool hasBlank = false; // between them
};

Head TakeHead(std::string_view line, std::size_t end) {
    const std::string_view word = Trim(line.substr(0, end));
    return {word, Trim(line.substr(end)), word.size() < end || (end < line.size() && line[end] == ' ')};
}

/// The first word, and all words before the bracket: "game author <x>" may be meant as either.
std::vector<Head> HeadsOf(std::string_view line) {
    const std::size_t blank = std::min(line.find_first_of(" <", 0), line.size());
    const std::size_t bracket = std::min(line.find('<'), line.size());
    std::vector<Head> heads = {TakeHead(line, blank)};
    if (bracket != blank)
        heads.push_back(TakeHead(line, bracket));
    return heads;
}

std::string Mended(std::string_view word, const Head& head) {
    if (IsMark(word) || head.rest.empty())
        return std::string(word);
    return std::string(word).append(" ").append(head.rest);
}

/// Whether a line of this keyword can end behind its head.
bool MakesSense(std::string_view word, const Head& head) {
    return IsMark(word) ? head.rest.empty() : !head.rest.empty();
}

class RawLineSearch {
public:
    RawLineSearch(const CheckedGame& game, Findings& findings) : game_(game), findings_(findings) {}

    void Run() {
        const GameModel& model = game_.Game();
        LookAtBlocks(*model.UnknownBlocks);
        LookAt({Place::Of({}, FieldId::GameMiscTags), *model.GameMiscTags, GameWords, "the game block"});
        int number = 0;
        for (const Room& room : model.Rooms) {
            ++number;
            LookAt({Place::Of({{FieldId::GameRooms, number}}, FieldId::RoomMiscTags), room.MiscTags,
                    RoomWords, "a room"});
            LookAtThings(number, room.Characters, FieldId::RoomCharacters, CharacterWords, "a character");
            LookAtThings(number, room.Objects, FieldId::RoomObjects, ObjectWords, "an object");
        }
    }

private:
    void LookAtThings(int room, const List<Thing>& things, FieldId list, Words words, const char* what) {
        int entry = 0;
        for (const Thing& thing : things)
            LookAt({Place::Of({{FieldId::GameRooms, room}, {list, ++entry}}, FieldId::ThingMiscTags),
                    thing.MiscTags, words, what});
    }

    /// Blocks of a kind that is a letter or two from one that is read.
    void LookAtBlocks(std::string_view blocks) {
        constexpr std::string_view Define = "define ";
        ForEachLine(blocks, [&](TextRange range, int) {
            const std::string_view line = range.Of(blocks);
            if (!BeginsWith(line, Define))
                return;
            const std::string_view rest = Trim(line.substr(Define.size()));
            const std::string_view kind = Trim(rest.substr(0, rest.find_first_of(" <")));
            const std::string_view nearest =
                NearestOf({"game", "synonyms", "room", "procedure", "text", "selection"}, kind);
            if (!nearest.empty() && !EqualIgnoringCase(nearest, kind))
                findings_.Add("S02", Place::Of({}, FieldId::GameUnknownBlocks, range),
                              "This block is kept, but not read: " + QuoteShortly(kind) +
                                  " is not known, and " + QuoteShortly(nearest) + " is.");
        });
    }

    void LookAt(const RawField& field) {
        if (field.text.empty())
            return;
        ForEachLine(field.text, [&](TextRange range, int) {
            const std::string_view line = range.Of(field.text);
            const bool isOfMap = BeginsWith(line, map::PinKeyword) && field.place.Depth() == 1;
            if (line.empty() || isOfMap)
                return;
            Place place = field.place;
            place.bytes = range;
            if (!FindUnknownMessage(place, line) && !FindKnownWord(field, place, line) &&
                !FindNearWord(field, place, line))
                findings_.Add("S03", place,
                              "This line is kept as it is: nothing here knows what " +
                                  QuoteShortly(HeadsOf(line).front().word) + " means.");
        });
    }

    void AddFix(Problem& problem, const Place& place, std::string_view line, const std::string& mended,
                bool needsNoChoice) {
        problem.fixes = {ChangeGame(ChangeTo(ShowShortly(mended)),
                                    [place, line = std::string(line), mended](GameModel& game) {
                                        GameModel changed = ReplaceBytes({}, place, line, mended).apply(game);
                                        if (!SameGame(changed, game) && ReadAgain(changed, place))
                                            game = std::move(changed);
                                    })};
        problem.fixes.front().needsNoChoice = needsNoChoice;
    }

    bool FindUnknownMessage(const Place& place, std::string_view line) {
        if (place.field != FieldId::GameMiscTags || !BeginsWith(line, "error <"))
            return false;
        const std::size_t open = line.find('<') + 1;
        const std::size_t end = line.find_first_of(";>", open);
        const std::string_view name =
            Trim(line.substr(open, end == std::string_view::npos ? end : end - open));
        Problem& problem = findings_.Add(
            "S10", place, "There is no message " + QuoteShortly(name) + ", so this text is never printed.");
        NameSet names;
        for (const ErrorMessage& message : game_.Game().ErrorMessages)
            names.Add(message.Name);
        const std::string_view nearest = names.Nearest(name);
        if (!nearest.empty() && end != std::string_view::npos && line[end] == ';')
            AddFix(problem, place, line, "error <" + std::string(nearest) + std::string(line.substr(end)),
                   false);
        return true;
    }

    /// A line that begins with a word of its block, or of another one.
    bool FindKnownWord(const RawField& field, const Place& place, std::string_view line) {
        for (const Head& head : HeadsOf(line)) {
            for (const std::string_view word : field.words) {
                if (!EqualIgnoringCase(head.word, word))
                    continue;
                const bool isComplete = MakesSense(word, head);
                const char* reason = !isComplete      ? " must have something in brackets behind it"
                                     : IsMark(word)   ? " counts in small letters only"
                                     : !head.hasBlank ? " counts with a blank behind it only"
                                                      : " is not understood so";
                Problem& problem =
                    findings_.Add("S01", place,
                                  "This line is kept, but does nothing: " + QuoteShortly(word) +
                                      (IsMark(word) && !isComplete ? " must stand alone" : reason) + '.');
                if (isComplete)
                    AddFix(problem, place, line, Mended(word, head), true);
                else if (IsMark(word))
                    AddFix(problem, place, line, std::string(word), false);
                return true;
            }
            if (head.hasBlank && IsOfOtherBlock(head.word) && line.find('<') != std::string_view::npos) {
                findings_.Add("S01", place,
                              std::string("This line is kept, but does nothing: ") + field.what +
                                  " has no line " + QuoteShortly(head.word) + '.');
                return true;
            }
        }
        return false;
    }

    static bool IsOfOtherBlock(std::string_view word) {
        // What has to do with people and things; others are words that add-ons may well use.
        constexpr std::string_view Typical[] = {"look", "speak", "gender", "prefix", "suffix",
                                                "give", "take",  "alias",  "north",  "south",
                                                "east", "west",  "out",    "place",  "indescription"};
        return std::find(std::begin(Typical), std::end(Typical), Lower(word)) != std::end(Typical);
    }

    bool FindNearWord(const RawField& field, const Place& place, std::string_view line) {
        for (const Head& head : HeadsOf(line)) {
            if (head.word.size() < 2 || game_.Commands().FindKeyword(head.word) != nullptr)
                continue;
            std::string_view nearest;
            for (const std::string_view word : field.words)
                if (MakesSense(word, head) && LettersApart(word, head.word, 1) == 1 &&
                    (nearest.empty() || word.front() == Lower(head.word.front())))
                    nearest = word;
            if (nearest.empty())
                continue;
            Problem& problem =
                findings_.Add("S02", place,
                              "This line is kept, but does nothing: " + QuoteShortly(head.word) +
                                  " is not known, and " + QuoteShortly(nearest) + " is.");
            AddFix(problem, place, line, Mended(nearest, head), false);
            return true;
        }
        return false;
    }

    const CheckedGame& game_;
    Findings& findings_;
};

void FindInRawLines(const CheckedGame& game, Findings& findings) {
    RawLineSearch(game, findings).Run();
}

} // namespace

std::span<const Check> RawLineChecks() {
    static constexpr Check Rows[] = {
        {"S01", Level::Warning, "Lines that look like known ones", FindInRawLines},
        {"S02", Level::Warning, "Misspelt keywords", FindInRawLines},
        {"S03", Level::Hint, "Lines that are kept as they are", FindInRawLines},
        {"S10", Level::Warning, "Texts for messages that do not exist", FindInRawLines},
    };
    return Rows;
}

} // namespace zem::problems
