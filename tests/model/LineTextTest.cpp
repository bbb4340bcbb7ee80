#include "model/LineText.h"

#include "model/GameModel.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zem {
namespace {

TEST(LineText, RecognisesKeywordsAfterBlanksAndInAnyCapitals) {
    struct Case {
        const char* line;
        const char* keyword;
        bool expected;
    };
    for (const Case& c : {
             Case{"   LOOK <x>", "look ", true},
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
        EXPECT_EQ(BeginsWith(c.line, c.keyword), c.expected) << c.line << " / " << c.keyword;
}

TEST(LineText, TakesParametersOutOfTheirBrackets) {
    struct Case {
        const char* line;
        const char* parameter;
        const char* after;
    };
    for (const Case& c : {
             Case{"north <Hall> x", "Hall", "x"},
             {"msg <>", "", ""},
             {"<a <b> c>", "a <b", "c>"},
             {"<  a  >   msg <b>  ", "  a  ", "msg <b>"},
         }) {
        EXPECT_EQ(GetParameter(c.line), c.parameter) << c.line;
        EXPECT_EQ(TextAfterParameter(c.line), c.after) << c.line;
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
    struct Case {
        const char* text;
        int leading;
        bool isWhole; // a number and nothing else
    };
    for (const Case& c : {
             Case{"12", 12, true},
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
        EXPECT_EQ(LeadingNumber(c.text), c.leading) << c.text;
        if (c.isWhole)
            EXPECT_EQ(WholeNumber(c.text), c.leading) << c.text;
        else
            EXPECT_THROW(WholeNumber(c.text), KelError) << c.text;
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

TEST(GameModel, JoinsItsListsEachInItsOwnWay) {
    GameModel game;
    EXPECT_EQ(ItemsToText(game), "");
    EXPECT_EQ(StartItemsToText(game), "");
    game.Items.Append({"lamp", true});
    game.Items.Append({"key", false});
    game.Items.Append({"rope", true});
    game.Collectables.Append({"gold p=0 [!]", "gold"});
    game.Collectables.Append({"luck n=1 []", "luck"});
    EXPECT_EQ(ItemsToText(game), "lamp; key; rope");
    EXPECT_EQ(StartItemsToText(game), "lamp, rope");
    EXPECT_EQ(CollectablesToText(game), "gold p=0 [!]; luck n=1 []");
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
} // namespace zem
