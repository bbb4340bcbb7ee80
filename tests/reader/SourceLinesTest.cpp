#include "reader/SourceLines.h"

#include "base/LineText.h"
#include "base/TextFile.h"
#include "model/Texts.h"
#include "reader/LoadGame.h"
#include "support/Games.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace zem::test {
namespace {

using Id = FieldId;

struct ReadFile {
    GameModel game;
    SourceLines lines;
    explicit ReadFile(const std::string& bytes) { ReadGame(game, bytes, &lines); }

    std::size_t LineOf(const Place& place) const { return lines.LineOf(game, place); }
};

/// Each line that something is expected of carries its number.
constexpr const char* Odd = "define game <1>\r\n"
                            "!include <2>\n"
                            "\titems <3, 3>\n"
                            "command <4> {\r\n"
                            "\n"
                            "  msg <6>\n"
                            "  if x then { msg <7> } else {\n"
                            "    msg <8>\n"
                            "\tmsg <9>\n"
                            "  }\n"
                            "}\n"
                            "kept 12\n"
                            "end define\n"
                            "define room <14>\n"
                            "north <15>\n"
                            "south msg <16>\n"
                            "look <17>\n"
                            "look <18>\n"
                            "define object <19>\n"
                            "use <20> a\n"
                            "kept 21\n"
                            "look { msg <22> }\n"
                            "end define\n"
                            "end define\n"
                            "define procedure <25>\n"
                            "if 26\n"
                            "else 27\n"
                            "msg <28> __\n"
                            "29\n"
                            "msg <30>\n"
                            "end define\n"
                            "define room <14>\n"
                            "command <33> x\n"
                            "define character <34>\n"
                            "end define\n"
                            "end define\n"
                            "define text <37>\n"
                            "\n"
                            "39\n"
                            "end define\n"
                            "define selection <41>\n"
                            "choice <42> x\n"
                            "end define\n"
                            "define synonyms\n"
                            "45 = 45\n"
                            "end define\n"
                            "define timer <47>\n"
                            "48\n"
                            "end define";

TEST(SourceLines, TellWhereRecordsFieldsAndScriptsBegin) {
    const ReadFile file(Odd);
    const std::pair<Place, std::size_t> cases[] = {
        {Place::Of({}, Id::GameName), 1},
        {Place::Of({{Id::GameIncludes, 1}}), 2},
        {Place::Of({{Id::GameItems, 2}}, Id::ItemName), 3},
        {Place::Of({{Id::GamePlayerCommands, 1}}, Id::CommandPattern), 4},
        {Place::Of({{Id::GamePlayerCommands, 1}}, Id::CommandScript), 6}, // in braces: its first command
        {Place::Of({{Id::GameProcedures, 2}}, Id::ProcedureScript, {10, 10}), 7},
        {Place::Of({{Id::GameProcedures, 4}}, Id::ProcedureScript), 7},
        {Place::Of({{Id::GameProcedures, 5}}, Id::ProcedureScript), 8},
        {Place::Of({{Id::GameProcedures, 5}}, Id::ProcedureScript, {9, 9}), 9},
        {Place::Of({}, Id::GameMiscTags), 2}, // in the game's block, the library stays there, too
        {Place::Of({}, Id::GameMiscTags, {14, 14}), 12},
        {Place::Of({{Id::GameRooms, 1}}), 14},
        {Place::Of({{Id::GameRooms, 1}}, Id::RoomName), 14},
        {Place::Of({{Id::GameRooms, 1}, {Id::RoomNorth, 0}}, Id::PairKey), 15},
        {Place::Of({{Id::GameRooms, 1}, {Id::RoomSouth, 0}}, Id::PairScript), 16},
        {Place::Of({{Id::GameRooms, 1}}, Id::RoomLook), 18}, // the last one counts
        // The things of both rooms of one name go to the last of them.
        {Place::Of({{Id::GameRooms, 2}, {Id::RoomObjects, 1}}, Id::ThingName), 19},
        {Place::Of({{Id::GameRooms, 2}, {Id::RoomObjects, 1}, {Id::ThingUses, 1}}, Id::PairScript), 20},
        {Place::Of({{Id::GameRooms, 2}, {Id::RoomObjects, 1}}, Id::ThingMiscTags), 21},
        {Place::Of({{Id::GameRooms, 2}, {Id::RoomObjects, 1}}, Id::ThingLook), 22},
        {Place::Of({{Id::GameProcedures, 1}}), 25},
        {Place::Of({{Id::GameProcedures, 1}}, Id::ProcedureScript), 26},           // with its "else"
        {Place::Of({{Id::GameProcedures, 1}}, Id::ProcedureScript, {15, 15}), 28}, // two lines joined
        {Place::Of({{Id::GameProcedures, 1}}, Id::ProcedureScript, {28, 28}), 30},
        {Place::Of({{Id::GameRooms, 2}, {Id::RoomCommands, 1}}), 33},
        {Place::Of({{Id::GameRooms, 2}, {Id::RoomCharacters, 1}}), 34},
        {Place::Of({{Id::GameTextSections, 1}}), 37},
        {Place::Of({{Id::GameTextSections, 1}}, Id::TextText, {2, 4}), 39},
        {Place::Of({{Id::GameTextSections, 2}}), 0}, // a standard text
        {Place::Of({{Id::GameSelectionMenus, 1}, {Id::MenuChoices, 1}}, Id::PairScript), 42},
        {Place::Of({{Id::GameSynonyms, 1}}, Id::SynonymWords), 45},
        {Place::Of({}, Id::GameUnknownBlocks, {19, 20}), 48},
        {Place::Of({{Id::GameRooms, 3}}), 0}, // no such room
    };
    for (const auto& [place, line] : cases)
        EXPECT_EQ(file.LineOf(place), line) << DescribePlace(file.game, place);
}

// Whatever stands in a game, its line in the file holds it.
TEST(SourceLines, LeadToTheTextsOfEverySample) {
    int texts = 0;
    for (const auto& path : FilesIn(ZEM_SAMPLES)) {
        const std::string bytes = ReadBytes(path);
        const ReadFile file(bytes);
        const std::vector<std::string_view> lines = SplitAt(bytes, "\n");
        ForEachText(file.game, [&](const Place& place, FieldUse, const std::string& text) {
            // The rest may have stood on a line of its own and been joined.
            const std::string_view start =
                std::string_view(text).substr(0, std::min<std::size_t>(12, text.find("\r\n")));
            const std::size_t line = file.LineOf(place);
            if (line == 0 || start == ActionExit || text.find(InternalProcedure) != std::string::npos)
                return;
            ++texts;
            const std::string_view inner = start.substr(0, start.find('<')); // "msg" may be the reader's
            ASSERT_LE(line, lines.size());
            EXPECT_TRUE(lines[line - 1].find(start) != std::string_view::npos || inner == "msg " ||
                        inner == "say ")
                << path << ':' << line << ": " << start;
        });
    }
    EXPECT_GT(texts, 1000);
}

} // namespace
} // namespace zem::test
