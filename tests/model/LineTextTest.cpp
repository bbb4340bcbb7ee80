#include "model/LineText.h"

#include "model/GameModel.h"
#include "support/Cases.h"

#include <gtest/gtest.h>
#include <string>

namespace zem::test {
namespace {

TEST(LineText, RecognisesKeywordsAfterBlanksAndInAnyCapitals) {
    for (const auto& [line, keyword, expected] : Cases<const char*, const char*, bool>{
             {"   LOOK <x>", "look ", true},
             {"lookout", "look ", false},
             {"look", "look ", false},
             {"look", "look", true},
             {"north <Hall>", "north <", true},
             {"north  <Hall>", "north <", false},
             {"\tlook <x>", "look ", false}, // a tab is no blank
             {"anything", "", true},
             {"", "", true},
             {"", "a", false},
             {"   ", "a", false},
             {"\xC9T\xC9 x", "\xE9t\xE9 ", true}, // accented capitals are capitals
             {"\x8A", "\x9A", true},
             {"\xD7", "\xF7", false}, // the multiplication sign is not the capital of the division sign
         })
        EXPECT_EQ(BeginsWith(line, keyword), expected) << line << " / " << keyword;
}

TEST(LineText, TakesParametersOutOfTheirBrackets) {
    for (const auto& [line, parameter, after] : Cases<const char*, const char*, const char*>{
             {"north <Hall> x", "Hall", "x"},
             {"msg <>", "", ""},
             {"<a <b> c>", "a <b", "c>"},
             {"<  a  >   msg <b>  ", "  a  ", "msg <b>"},
         }) {
        EXPECT_EQ(GetParameter(line), parameter) << line;
        EXPECT_EQ(TextAfterParameter(line), after) << line;
    }
    for (const char* line : {"", "a > b <c>", "alias Hall", "<open", "closed>"})
        EXPECT_THROW(GetParameter(line), KelError) << line;

    EXPECT_EQ(FirstWord("gold p=0 [!]"), "gold");
    EXPECT_EQ(FirstWord(" x"), "");
    EXPECT_THROW(FirstWord("gold"), KelError);

    EXPECT_EQ(TextAfter("look  <x> ", "look "), " <x> ");
    EXPECT_EQ(TextAfter("ab", "look "), "");
}

TEST(LineText, PacksLinesAndExpandsTabs) {
    EXPECT_EQ(CrLfToBar("a\r\nb\r\n"), "a|nb|n");
    EXPECT_EQ(CrLfToBar("\r\r\n\n"), "\r|n\n");
    EXPECT_EQ(BarToCrLf("a|n|nb"), "a\r\n\r\nb");
    EXPECT_EQ(BarToCrLf("||n|"), "|\r\n|");
    std::string line = "\tx\t";
    ExpandTabs(line);
    EXPECT_EQ(line, "    x    ");
}

TEST(LineText, ReadsNumbers) {
    for (const auto& [text, leading, isWhole] : Cases<const char*, int, bool /* a number and nothing else */>{
             {"12", 12, true},
             {"1e-400", 0, true},
             {"  7 ", 7, true},
             {"-5", -5, true},
             {"+5", 5, true},
             {"12abc", 12, false},
             {"abc", 0, false},
             {"", 0, false},
             {"-", 0, false},
             {"inf", 0, false},
             {"2.5", 2, true},
             {"3.5", 4, true},
             {"1e3", 1000, true},
             {"-32768", -32768, true},
         }) {
        EXPECT_EQ(LeadingNumber(text), leading) << text;
        if (isWhole)
            EXPECT_EQ(WholeNumber(text), leading) << text;
        else
            EXPECT_THROW(WholeNumber(text), KelError) << text;
    }
    for (const char* text : {"32768", "-32769", "99999999999", "1e400"}) {
        EXPECT_THROW(LeadingNumber(text), KelError) << text;
        EXPECT_THROW(WholeNumber(text), KelError) << text;
    }
}

TEST(LineText, StoresFlagsAsWords) {
    EXPECT_STREQ(YesNoText(true), "Yes");
    EXPECT_STREQ(YesNoText(false), "No");
    for (const char* yes : {"Yes", "YES", "yes"})
        EXPECT_TRUE(IsYes(yes)) << yes;
    for (const char* no : {"No", "", "1", "true", "y", "yes "})
        EXPECT_FALSE(IsYes(no)) << no;
    EXPECT_TRUE(IsTrueFlag(-1) && !IsTrueFlag(1) && !IsTrueFlag(0));
    EXPECT_TRUE(IsOneFlag(1) && !IsOneFlag(2) && !IsOneFlag(-1));
}

TEST(GameModel, StartsFromTheNewGameTemplate) {
    GameModel game;
    game.FileName = "old.kel";
    game.Modified = true;
    game.NextInternalProcedure = 9;
    game.Rooms.Append().Name = "Hall";
    game.UnknownBlocks = "x";
    game.ErrorMessages.Append({"description", "badgo", "No way."});
    NewGame(game);

    GameModel expected;
    expected.NextInternalProcedure = 9; // numbers are not used again while the program runs
    expected.KelVersion = "217";
    expected.GameInfo = "Created with ZEM 1.0";
    expected.TextSections.Append({"intro", ""});
    expected.TextSections.Append({"win", ""});
    expected.TextSections.Append({"lose", ""});
    expected.ErrorMessages.Append({"description", "badgo", ""});
    EXPECT_EQ(game, expected);
}

} // namespace
} // namespace zem::test
