#include "script/FormatCodes.h"

#include "support/Cases.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zem::test {
namespace {

TEST(FormatCodes, BecomeWordsOrVanish) {
    for (const auto& [text, shown, removed] : Cases<const char*, const char*, const char*>{
             {"plain", "plain", "plain"},
             {"|bword|xb", "[BOLD ON]word[BOLD OFF]", "word"},
             {"|u|xu|i|xi", "[UNDERLINE ON][UNDERLINE OFF][ITALIC ON][ITALIC OFF]", ""},
             {"|cr|cb|cl|cy|cg", "[RED][BLACK][BLUE][YELLOW][GREEN]", ""},
             {"a|nb|w", "a[NEW LINE]b[WAIT]", "ab"},
             {"|jc|jl|jr", "[JUSTIFY: CENTER][JUSTIFY: LEFT]2[JUSTIFY: RIGHT]", ""},
             {"|s123", "[SIZE 12]3", "3"},
             {"|s1", "[SIZE 1]", ""},
             {"|s|b!", "[SIZE [BOLD ON]]!", "!"}, // the two characters are looked at again
             {"|sx|!", "[SIZE x[UNKNOWN]!", "!"},
             {"|cx", "[CLEAR]x", "x"},
             {"|c", "[CLEAR]", ""},
             {"|CR", "[UNKNOWN]R", "R"}, // capitals count
             {"|qx", "[UNKNOWN]x", "x"},
             {"|x", "[UNKNOWN]", ""},
             {"|j", "[UNKNOWN]", ""},
             {"end|", "end[UNKNOWN]", "end"},
             {"||b", "[UNKNOWN]b", "b"},
         }) {
        EXPECT_EQ(FormatCodesToText(text, false), removed) << text;
        EXPECT_EQ(FormatCodesToText(text, true), shown) << text;
    }
}

TEST(FormatCodes, SplitATextIntoRunsOfOneLook) {
    struct Run {
        std::string text;
        TextFormat format;
        bool operator==(const Run&) const = default;
    };
    const auto runs = [](std::string_view text) {
        std::vector<Run> result;
        ForEachFormattedRun(text, [&](std::string_view run, const TextFormat& format) {
            result.push_back({std::string(run), format});
        });
        return result;
    };
    const TextFormat plain;
    EXPECT_EQ(runs("a|bb|crc|xb|u|id"), (std::vector<Run>{{"a", plain},
                                                          {"b", {true, false, false, -1}},
                                                          {"c", {true, false, false, 12}},
                                                          {"d", {false, true, true, 12}}}));
    // A code without a look of its own loses its bar and is shown.
    EXPECT_EQ(runs("one|ntwo|"), (std::vector<Run>{{"one", plain}, {"ntwo", plain}}));
    EXPECT_EQ(runs("||bx|s12"),
              (std::vector<Run>{{"x", {true, false, false, -1}}, {"s12", {true, false, false, -1}}}));
    EXPECT_TRUE(runs("").empty());
}

} // namespace
} // namespace zem::test
