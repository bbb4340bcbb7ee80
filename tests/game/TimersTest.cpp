#include "game/Timers.h"

#include "support/Cases.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

const std::string Blocks =
    "define weather <rain>\r\nchance <5>\r\nend define\r\n\r\n"
    "define timer <tide>\r\n  interval <120>\r\n\taction do <the tide>\r\nend define\r\n\r\n"
    "define timer <odd>\r\ninterval <9>\r\nloop\r\nend define\r\n\r\n"
    "define timer <bare>\r\nend define\r\n";

TEST(Timers, AreReadFromBlocksOfUnknownKinds) {
    EXPECT_EQ(ReadTimers(Blocks), (std::vector<GameTimer>{{"tide", "120", "do <the tide>", true, 0},
                                                          {"odd", "9", "", false, 1},
                                                          {"bare", "", "", true, 2}}));
    EXPECT_EQ(ReadTimers("define timer <open>\r\ninterval <5"),
              (std::vector<GameTimer>{{"open", "", "", false, 0}}));
}

TEST(Timers, ChangeOnlyTheirOwnBytes) {
    using Change = std::function<void(std::vector<GameTimer>&)>;
    for (const auto& [change, from, to] : Cases<Change, std::string, std::string>{
             {[](auto&) {}, "", ""},
             {[](auto& timers) { timers[0].name = "ebb"; }, "<tide>", "<ebb>"},
             {[](auto& timers) { timers[0].seconds = "7"; }, "<120>", "<7>"},
             {[](auto& timers) { timers[0].action = "win"; }, "do <the tide>", "win"},
             {[](auto& timers) { timers[1].seconds = "7"; }, "", ""}, // not understood, so not changed
             {[](auto& timers) {
                  timers[2].seconds = "7";
                  timers[2].action = "win";
              },
              "<bare>\r\n", "<bare>\r\n  interval <7>\r\n  action win\r\n"},
             {[](auto& timers) { timers.erase(timers.begin() + 1); },
              "define timer <odd>\r\ninterval <9>\r\nloop\r\nend define\r\n\r\n", ""},
             {[](auto& timers) {
                  timers.push_back({"new", "60", "win"});
              },
              "<bare>\r\nend define\r\n",
              "<bare>\r\nend define\r\ndefine timer <new>\r\n  interval <60>\r\n  action win\r\nend "
              "define\r\n\r\n"}}) {
        std::vector<GameTimer> timers = ReadTimers(Blocks);
        change(timers);
        std::string wanted = Blocks;
        wanted.replace(wanted.find(from), from.size(), to);
        EXPECT_EQ(WriteTimers(Blocks, timers), wanted);
    }
}

TEST(Timers, TakeWholeSecondsOnly) {
    for (const auto& [text, isOne] : Cases<std::string, bool>{{"1", true},
                                                              {" 32767 ", true},
                                                              {"0", false},
                                                              {"-5", false},
                                                              {"1.5", false},
                                                              {"", false},
                                                              {"32768", false}})
        EXPECT_EQ(IsTimerInterval(text), isOne) << text;
}

} // namespace
} // namespace zem::test
