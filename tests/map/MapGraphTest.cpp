#include "map/MapGames.h"
#include "support/Cases.h"

#include <gtest/gtest.h>
#include <optional>

namespace zem::test {
namespace {

using map::Cell;

TEST(MapGraph, ReadsWhereTheAuthorPutARoom) {
    for (const auto& [tags, pin] : Cases<std::string, std::optional<Cell>>{
             {"", std::nullopt},
             {"zem-map <3; -4>\r\n", Cell{3, -4}},
             {"  ZEM-MAP < +3 ;-4 > anything\r\n", Cell{3, -4}},
             {"zem-map <1; 1>\r\nother <x>\r\nzem-map <2; 2>\r\n", Cell{2, 2}},
             {"zem-map <1; 1>\r\nzem-map <far; away>\r\n", Cell{1, 1}},
             {"zem-map <1>\r\n", std::nullopt},
             {"zem-map <1; 2; 3>\r\n", std::nullopt},
             {"zem-map <1; 2.5>\r\n", std::nullopt},
             {"zem-map >1; 2<\r\n", std::nullopt},
             {"zem-map <1; 10000>\r\n", std::nullopt},
             {"zem-map <1; 99999999999999999999>\r\n", std::nullopt},
             {"zem-maps <1; 2>\r\n", std::nullopt},
         })
        EXPECT_EQ(map::PinOf(tags), pin) << tags;
}

TEST(MapGraph, WritesOnePlaceAndLeavesWhatItCannotRead) {
    for (const auto& [tags, pin, written] : Cases<std::string, std::optional<Cell>, std::string>{
             {"", Cell{3, -4}, "zem-map <3; -4>\r\n"},
             {"zem-map <1; 2>\r\n", std::nullopt, ""},
             {"light <on>\r\n zem-map <1; 2>\r\nzem-map <far; 1>\r\nzem-map <5; 6>\r\n", Cell{0, 0},
              "light <on>\r\nzem-map <far; 1>\r\nzem-map <0; 0>\r\n"},
             {"light <on>", Cell{1, 1}, "light <on>\r\nzem-map <1; 1>\r\n"},
             {"light <on>", std::nullopt, "light <on>"},
         }) {
        EXPECT_EQ(map::WithPin(tags, pin), written) << tags;
        EXPECT_EQ(map::PinOf(written), pin) << tags;
    }
}

TEST(MapGraph, KnowsWhereExitsPlacesAndScriptsLead) {
    const map::MapGraph graph = GraphOf(
        RoomBlock("A",
                  "north <B>\nsouth <A>\neast <Nowhere>\nwest if has <key> then goto <B> else msg <No.>\n"
                  "out <B>\nplace <the; C> goto <C>\nplace <C>\nplace <A>\nplace <Gone>") +
        RoomBlock("B", "northeast if has <key> then goto <A> else goto <C>\nsouthwest msg <No way.>") +
        RoomBlock("C", "north do <slide>") + RoomBlock("B") +
        "define procedure <slide>\nmsg <Whee.>\ngoto <A>\nend define\n");
    std::string exits;
    for (const map::Exit& exit : graph.exits)
        exits += std::to_string(exit.from) + ' ' + std::to_string(exit.direction) + ' ' +
                 std::to_string(exit.to) + (exit.scripted ? "s;" : ";");
    EXPECT_EQ(exits, "0 0 3;0 4 0;0 2 -1;0 6 3s;1 1 -1s;1 5 -1s;2 0 0s;") << "of two rooms B the last counts";
    for (const auto& [script, condition] : Cases<std::string, std::string>{
             {"msg <No.>", ""},
             {"if has <key> then goto <A> else msg <No.>", "has key"},
             {"if not flag <open> then goto <A>", "not flag open"},
             {"if has <key> and in <A> then goto <A>", "has key ..."},
             {"do <ask>", "flag asked"},
             {"if has <key", ""},
         })
        EXPECT_EQ(GraphOf(RoomBlock("A", "north " + script) +
                          "define procedure <ask>\nmsg <Well?>\nif flag <asked> then goto <A>\nend define\n")
                      .exits.front()
                      .condition,
                  condition)
            << script;
    EXPECT_TRUE(GraphOf(RoomBlock("", "") + RoomBlock("A", "")).ties.empty())
        << "no way out leads to no name";
    std::string ties;
    for (const map::Tie& tie : graph.ties)
        ties += std::to_string(tie.from) + ' ' + std::to_string(tie.to) +
                (tie.out ? " out;" : ' ' + tie.words + ';');
    EXPECT_EQ(ties, "0 3 out;0 2 the; C;0 2 C;");
    EXPECT_EQ(graph.start, 0);
}

} // namespace
} // namespace zem::test
