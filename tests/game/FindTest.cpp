#include "game/Find.h"

#include "base/LineText.h"
#include "game/PlaceLine.h"
#include "game/WhereUsed.h"
#include "game/WholeWords.h"
#include "model/Texts.h"
#include "readback/ReadBack.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"
#include "support/RandomGame.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace zem::test {
namespace {

class FindIn : public testing::Test {
protected:
    std::vector<std::string> Found(const GameModel& game, const FindQuery& query) const {
        const GameIndex index(commands, game);
        std::vector<std::string> found;
        for (const FindHit& hit : Find(index, query).hits)
            found.push_back(DescribePlace(game, hit.place) + " (" + Describe(hit.kind) + ")");
        return found;
    }

    const CommandLookup commands{ShippedCatalogue()};
};

constexpr const char* Game =
    "define game <The Key>\nstart <Hall>\nitems <key>\ncollectables <key p=0 [! key*s*]>\n"
    "default fontname <Keyboard>\n"
    "command <unlock #key#> if has <key> then msg <The key #key#.> else give <key>\n"
    "error <badgo; No key.>\nkeyhole <key>\nend define\n"
    "define synonyms\nkey = clef\nend define\n"
    "define room <Hall>\nlook <A KEY, monkey, k\xC9y.>\nnorth <Key room>\n"
    "place <key; Key room> set <key; 1>\n"
    "define object <key>\ntake ask <answer; key?>\nend define\nend define\n"
    "define text <key>\nkey\nkey to #key#\nend define\n";

TEST_F(FindIn, EveryFieldWithWhatStandsThere) {
    EXPECT_EQ(Found(LoadBytes(CrLf(Game)), {.words = "key"}),
              (std::vector<std::string>{
                  "game properties, game name (printed text)",
                  "game properties, default font name (setting)",
                  "game properties, miscellaneous tags, line 1 (raw line)",
                  "game properties, miscellaneous tags, line 1 (raw line)",
                  "room Hall, description (printed text)",
                  "room Hall, description (printed text)",
                  "room Hall, exit north (reference)",
                  "room Hall, place key; Key room, name (printed text)",
                  "room Hall, place key; Key room, name (reference)",
                  "room Hall, place key; Key room, action (reference)",
                  "object key in Hall, name (name)",
                  "object key in Hall, take (printed text)",
                  "text block key, name (name)",
                  "text block key, text, line 1 (printed text)",
                  "text block key, text, line 2 (printed text)",
                  "text block key, text, line 2 (reference)",
                  "item key, name (name)",
                  "collectable key, definition (name)",
                  "collectable key, definition (setting)",
                  "synonym clef, words (pattern)",
                  "player command unlock #key#, pattern (reference)",
                  "player command unlock #key#, action (reference)",
                  "player command unlock #key#, action (printed text)",
                  "player command unlock #key#, action (reference)",
                  "player command unlock #key#, action (reference)",
                  "error message badgo, text (printed text)",
              }));
}

TEST_F(FindIn, TakesWordsCapitalsKindsAndExpressions) {
    GameModel game;
    game.GameInfo = "Lamp, lamps; \xC9t\xE9 |n LAMP!";
    game.StartRoom = "lamp room";
    game.StartScript = "msg <a lamp>\r\nflag on <lamp>\r\nlamp";
    game.GameMiscTags = std::string("aXb\r\naXXb\r\n\r\n");
    for (const auto& [query, count] : Cases<FindQuery, std::size_t>{
             {{.words = "lamp"}, 7},
             {{.words = "lamp", .wholeWords = true}, 6},
             {{.words = "lamp", .capitals = true}, 5},
             {{.words = "LAMP", .wholeWords = true, .capitals = true}, 1},
             {{.words = "\xE9T\xC9"}, 1},
             {{.words = "lamp", .kinds = {HitKind::Reference}}, 2},
             {{.words = "lamp", .kinds = {HitKind::Script, HitKind::Reference}}, 3},
             {{.words = "lamps lamp"}, 0},
             {{.words = ""}, 0},
             {{.words = std::string(1, '\0')}, 0},
             {{.words = "lamp\r\nflag"}, 0},
             {{.words = "aa", .isRegularExpression = true}, 0},
             {{.words = "lamps?", .isRegularExpression = true}, 7},
             {{.words = "lamp", .isRegularExpression = true, .wholeWords = true}, 6},
             {{.words = "^lamp$", .isRegularExpression = true}, 1},
             {{.words = "\\b\xE9\\w\xC9\\b", .isRegularExpression = true}, 1},
             {{.words = "\xC9t\xE9", .isRegularExpression = true, .capitals = true}, 1},
             {{.words = "x*", .isRegularExpression = true}, 2},                        // nothing is no hit
             {{.words = "\\p{Lu}", .isRegularExpression = true, .capitals = true}, 9}, // in all texts alike
             {{.words = "\\x{e9}", .isRegularExpression = true}, 2},
             {{.words = "\\N{U+e9}", .isRegularExpression = true}, 2},
             {{.words = "\\b\\w{3}\\b", .isRegularExpression = true}, 3},
             {{.words = "a.*b$", .isRegularExpression = true}, 2},
             {{.words = "(?=a)\\Ka", .isRegularExpression = true, .kinds = {HitKind::RawLine}}, 2},
         })
        EXPECT_EQ(Find(GameIndex(commands, game), query).count, count) << query.words;
    const FindResult few = Find(GameIndex(commands, game), {.words = "lamp"}, 2);
    EXPECT_EQ(few.hits.size(), 2u);
    EXPECT_EQ(few.count, 7u);
}

TEST_F(FindIn, TellsOfExpressionsThatAreWrongOrTooSlow) {
    GameModel game;
    game.GameInfo = std::string(40, 'a') + "\xE9";
    game.UnknownBlocks = std::string(200'000, 'a');
    for (const auto& [expression, problem] : Cases<std::string, std::string>{
             {"(lamp", "The expression is not understood at character 6: missing closing parenthesis."},
             {"\xE9\xE9[", "The expression is not understood at character 4: missing terminating ] for "
                           "character class."},
             {"(a+a+)+[bc]", "The expression takes too long on these texts. Make it simpler."},
             {"(a|a)*[bc]", "The expression takes too long on these texts. Make it simpler."},
         })
        EXPECT_EQ(Find(GameIndex(commands, game), {.words = expression, .isRegularExpression = true}).problem,
                  problem);
}

/// Where a plain search finds the words in the fields of the file that a save writes.
std::vector<Place> PlainSearch(const GameModel& game, const std::string& words, bool wholeWords) {
    std::vector<Place> found;
    const std::string wanted = Lower(words);
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        const bool isRepeated = place.field == FieldId::CollectableName; // it begins the definition, too
        const bool runsScript = use.kind == FieldKind::Exit && text == ActionExit; // it has no name there
        if (isRepeated || runsScript || place.field == FieldId::ErrorDescription)
            return;
        const int message = place.steps[0].entry;
        if (place.field == FieldId::ErrorName && game.ErrorMessages[message].GameText.empty())
            return; // no line of the file
        const std::string small = Lower(text);
        for (std::size_t at = small.find(wanted); at != std::string::npos;) {
            const auto isLetter = [&](std::size_t k) {
                const auto c = static_cast<unsigned char>(small[k]);
                return std::isalnum(c) != 0 || c == '_' || c >= 0xC0;
            };
            const std::size_t end = at + wanted.size();
            const bool isPart = (at > 0 && isLetter(at - 1) && isLetter(at)) ||
                                (end < small.size() && isLetter(end) && isLetter(end - 1));
            if (!wholeWords || !isPart) {
                Place hit = place;
                hit.bytes = {at, end};
                found.push_back(hit);
            }
            at = small.find(wanted, wholeWords && isPart ? at + 1 : end);
        }
    });
    return found;
}

bool IsSame(std::vector<FindHit> hits, const std::vector<Place>& places) {
    return hits.size() == places.size() && std::all_of(places.begin(), places.end(), [&](const Place& place) {
               return std::count_if(hits.begin(), hits.end(),
                                    [&](const FindHit& hit) { return hit.place == place; }) == 1;
           });
}

TEST_F(FindIn, FindsExactlyWhatAPlainSearchOfTheSavedFileFinds) {
    std::mt19937 random(14);
    std::vector<GameModel> games;
    for (const auto& path : FilesIn(ZEM_SAMPLES))
        games.push_back(LoadBytes(ReadBytes(path)));
    for (unsigned seed = 1; seed <= 60; ++seed)
        games.push_back(RandomGame(seed, 3).Make());
    int hits = 0;
    for (const GameModel& made : games) {
        GameModel game = GameWithErrorNames();
        try {
            ReadGame(game, GameFile(made));
        } catch (const KelError&) {
            continue; // a random game that cannot be read
        }
        const GameIndex index(commands, game);
        std::vector<std::string> words = {"a", "lamp", "the", ">", "|n", "Procedure"};
        ForEachText(game, [&](const Place&, FieldUse, const std::string& text) {
            if (random() % 200 == 0)
                words.push_back(text.substr(random() % text.size(), 1 + random() % 6));
        });
        for (const std::string& wanted : words)
            for (const bool wholeWords : {false, true}) {
                const FindResult found = Find(index, {.words = wanted, .wholeWords = wholeWords}, 400);
                const std::vector<Place> plain = PlainSearch(game, wanted, wholeWords);
                EXPECT_EQ(found.count, plain.size()) << wanted << wholeWords;
                if (plain.size() <= 400) {
                    EXPECT_TRUE(IsSame(found.hits, plain)) << wanted << wholeWords;
                }
                hits += static_cast<int>(plain.size());
            }
    }
    EXPECT_GT(hits, 10'000);
}

TEST_F(FindIn, NamesTheNameAtAHit) {
    const GameModel game = LoadBytes(CrLf(Game));
    const GameIndex index(commands, game);
    std::string names;
    for (const FindHit& hit :
         Find(index, {.words = "key", .kinds = {HitKind::Name, HitKind::Reference}}).hits) {
        const auto name = NameAt(index, hit.place);
        ASSERT_TRUE(name) << DescribePlace(game, hit.place);
        names += std::string(name->name) + std::to_string(static_cast<int>(name->kind)) + " ";
    }
    EXPECT_EQ(names, "Key room1 Key room1 key9 key2 key7 key9 key5 key10 key9 key5 key9 key5 ");
    EXPECT_FALSE(NameAt(index, Place::Of({}, FieldId::GameName, {4, 7})));
}

TEST_F(FindIn, NamesWhatAPlaceIsAbout) {
    const GameModel game = LoadBytes(
        CrLf("define game <G>\nstart <Hall>\nend define\ndefine room <Hall>\nlook <Hall of #fame#.>\n"
             "script show <Tom> do <~Internal Procedure 1> picture <a.png>\n"
             "define character <Tom>\nend define\ndefine object <Tom>\nend define\n"
             "define object <cup>\nend define\nend define\n"
             "define procedure <~Internal Procedure 1>\nshow <cup>\nset <fame; 1>\nend define\n"));
    const GameIndex index(commands, game);
    const PlaceStep hall{FieldId::GameRooms, 1};
    const auto named = [&](const Place& place) {
        const auto found = NamedAt(index, place);
        return found ? std::string(Describe(found->kind)) + " " + found->name : "nothing";
    };
    const auto hit = [&](const char* words) {
        return named(Find(index, {.words = words}).hits.front().place);
    };
    EXPECT_EQ(named(Place::Of({hall}, FieldId::RoomName)), "room Hall");
    EXPECT_EQ(named(Place::Of({}, FieldId::GameStartRoom)), "room Hall");
    EXPECT_EQ(named(Place::Of({hall, {FieldId::RoomObjects, 2}})), "object cup") << "a record as a whole";
    EXPECT_EQ(named(Place::Of({hall}, FieldId::RoomScript)), "nothing") << "several names stand in it";
    EXPECT_EQ(named(Place::Of({hall}, FieldId::RoomLook)), "nothing");
    EXPECT_EQ(hit("cup"), "object cup");
    EXPECT_EQ(hit("fame"), "variable fame");
    EXPECT_EQ(hit("Internal"), "nothing") << "nobody gave that name";
    EXPECT_EQ(hit("a.png"), "nothing");
}

TEST(InContext, ShowsTheLineAroundTheBytes) {
    const std::string longLine = std::string(100, 'a') + "HIT" + std::string(100, 'b');
    for (const auto& [text, bytes, shown] : Cases<std::string, TextRange, std::string>{
             {"one\r\n  two three \r\nfour", {7, 10}, "[two] three"},
             {"one\r\n", {5, 5}, "[]"},
             {"\tone", {1, 4}, " [one]"},
             {"two\r\nlines", {0, 7}, "[two]"},
             {longLine, {100, 103}, "...aaaaa[HIT]bbbbbbbbbbbb..."},
             {"HIT" + std::string(30, 'b'), {0, 3}, "[HIT]bbbbbbbbbbbbbbbbb..."},
             {std::string(30, 'a') + "HIT", {30, 33}, "...aaaaaaaaaaaaaaaaa[HIT]"},
             {longLine, {100, 150}, "...[HIT" + std::string(47, 'b') + "]..."},
         }) {
        const LineInContext context = InContext(text, bytes, 20);
        const TextRange marked = context.marked;
        EXPECT_EQ(context.text.substr(0, marked.begin) + "[" + std::string(marked.Of(context.text)) + "]" +
                      context.text.substr(marked.end),
                  shown);
    }
}

TEST(GroupOf, IsTheRoomOrTheListOfTheOwner) {
    const GameModel game =
        LoadBytes(CrLf("define game <G>\nstartscript {\nwin\n}\nend define\ndefine room <>\nend define\n"
                       "define room <Hall>\ndefine object <o>\nlook {\nwin\nlook\n}\nend define\nend define\n"
                       "define procedure <p>\nif flag <f> then {\nwin\n}\nend define\n"));
    const ScriptOwners owners(game);
    const auto title = [&](const Place& place) { return GroupTitle(game, GroupOf(owners, place)); };
    EXPECT_EQ(title(Place::Of({{FieldId::GameProcedures, 1}})), "Procedures");
    EXPECT_EQ(title(Place::Of({{FieldId::GameProcedures, 2}}, FieldId::ProcedureScript)), "Game properties");
    EXPECT_EQ(title(Place::Of({{FieldId::GameProcedures, 3}}, FieldId::ProcedureScript)), "Hall");
    EXPECT_EQ(title(Place::Of({{FieldId::GameProcedures, 4}}, FieldId::ProcedureScript)), "Procedures");
    EXPECT_EQ(title(Place::Of({{FieldId::GameRooms, 1}})), "Room number 1");
}

} // namespace
} // namespace zem::test
