#include "kel/IfLine.h"

#include "support/CaseFile.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace zem::test {
namespace {

std::string Problem(const std::string& line) {
    return ProblemOf([&] { ParseIfLine(line); });
}

TEST(IfLine, TakesALineApart) {
    const IfLine parsed =
        ParseIfLine("  IF not has <a key> And in<Hall> or empty handed then msg <if a then b else c> "
                    "else if flag <x> then do <y> else die");
    EXPECT_EQ(parsed.Conditions, (std::vector<Condition>{{Joiner::And, true, "has", true, "a key"},
                                                         {Joiner::And, false, "in", true, "Hall"},
                                                         {Joiner::Or, false, "empty handed", false, ""}}));
    EXPECT_EQ(parsed.Then, "msg <if a then b else c>");
    EXPECT_EQ(parsed.Else, "if flag <x> then do <y> else die");
}

TEST(IfLine, GivesAnElseToTheNearestIf) {
    EXPECT_EQ(ParseIfLine("if a then if b then x else y").Else, "");
    const IfLine both = ParseIfLine("if a then if b then x else y else z");
    EXPECT_EQ(both.Then, "if b then x else y");
    EXPECT_EQ(both.Else, "z");
}

TEST(IfLine, SaysWhyALineIsNotUnderstood) {
    std::string deep;
    for (int k = 0; k < 100'000; ++k)
        deep += "if a then ";
    for (const auto& [line, problem] : CasesIn<2>("bad-if-lines"))
        EXPECT_EQ(Problem(line), problem) << line;
    EXPECT_EQ(Problem(deep + "x"), "too many \"if\" stand inside one another");
}

TEST(IfLine, RefusesPartsOfWhichNoLineCanBeMade) {
    const Condition has{Joiner::And, false, "has", true, "x"};
    const std::string none = "no line can be made of this: ";
    for (const auto& [parts, problem] : Cases<IfLine, std::string>{
             {{{has}, "if b then x", "y"},
              "the \"else\" would belong to the \"if\" inside the \"then\" part: "
              "give that one an \"else\" of its own, or put it into a procedure"},
             {{{}, "x", ""}, none + "a condition is missing"},
             {{{has}, "", "y"}, none + "there is no command after \"then\""},
             {{{{Joiner::And, false, "has", true, "a>b"}}, "x", ""},
              none + "after a condition comes \"and\", \"or\" or \"then\""},
             {{{has}, "msg <x> else y", ""}, none + "it would be read as something else"},
         })
        EXPECT_EQ(ProblemOf([line = parts] { WriteIfLine(line); }), problem);
}

TEST(IfLine, ParsesWhatItWritesForRandomLines) {
    std::mt19937 random(11);
    const std::vector<std::string> pieces = {"if",  "then", "else",  "and", "or",   "not",
                                             "has", "<x>",  "<a b>", "msg", "<",    ">",
                                             "  ",  "then", "else",  "if",  "flag", "<then>"};
    int understood = 0;
    for (int round = 0; round < 60'000; ++round) {
        std::string line = "if has <x> then ";
        for (auto count = 1 + random() % 9; count > 0; --count)
            line += pieces[random() % pieces.size()] + " ";
        if (!Problem(line).empty())
            continue;
        ++understood;
        const IfLine parsed = ParseIfLine(line);
        ASSERT_EQ(ParseIfLine(WriteIfLine(parsed)), parsed) << line;
    }
    EXPECT_GT(understood, 1000);
}

TEST(IfLine, IsDescribedInPlainEnglish) {
    const CommandLookup commands(ShippedCatalogue());
    EXPECT_EQ(
        DescribeIfLine("if has <key> and not flag <open> then goto <Hall> else msg <No.>", commands),
        "If the player has \"key\" and it is not so that the flag \"open\" is set, then: Move the player to "
        "\"Hall\"; otherwise: Print \"No.\"");
    EXPECT_EQ(DescribeIfLine("if strange <x> then if has <y> then win", commands),
              "If strange <x>, then: If the player has \"y\", then: The player wins");
    EXPECT_EQ(DescribeIfLine("if nonsense", commands), "if nonsense");

    // The catalogue may hold a keyword that begins another one.
    CommandCatalogue overlapping;
    overlapping.Append({"if has", "item", "has", "Item", "If the player has $ ..."});
    overlapping.Append({"if has seen", "room", "has seen", "Room", "If the player has seen $ ..."});
    overlapping.Append({"(other)", "", "", "", "$"});
    EXPECT_EQ(DescribeIfLine("if HAS seen <Hall> then win", CommandLookup(overlapping)),
              "If the player has seen Hall, then: win");
}

} // namespace
} // namespace zem::test
