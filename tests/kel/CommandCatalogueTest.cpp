#include "kel/CommandCatalogue.h"

#include "base/LineText.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <gtest/gtest.h>
#include <string>

namespace zem::test {
namespace {

/// Loads the catalogue and returns what went wrong, or nothing.
std::string Load(CommandCatalogue& catalogue, std::string_view bytes) {
    const TempFolder folder;
    return ProblemOf([&] { LoadCommandCatalogue(catalogue, folder.Write("zem.dat", bytes)); });
}

TEST(CommandCatalogue, SplitsEachLineAtItsFirstFourPercentSigns) {
    CommandCatalogue catalogue;
    EXPECT_EQ(
        Load(catalogue, "  msg % text %Print% What % Print $ 50% of it \r\nclear%!%Clear% ! %Clear\r\n"), "");
    ASSERT_EQ(catalogue.Count(), 2);
    EXPECT_EQ(catalogue[1], (CommandDefinition{"msg", "text", "Print", "What", "Print $ 50% of it"}));
    EXPECT_EQ(catalogue[2], (CommandDefinition{"clear", "!", "Clear", "!", "Clear"}));
}

TEST(CommandCatalogue, KeepsTheEntriesBeforeABadLine) {
    CommandCatalogue catalogue;
    EXPECT_EQ(Load(catalogue, "msg%a%b%c%d\r\nsay%a%b%c\r\ndo%a%b%c%d\r\n"),
              "line 2: a command needs five fields with \"%\" between them: say%a%b%c");
    ASSERT_EQ(catalogue.Count(), 1);
    EXPECT_EQ(catalogue[1].Keyword, "msg");
    EXPECT_EQ(Load(catalogue, "a\tb%1%2%3%4\n"), "");
    ASSERT_EQ(catalogue.Count(), 1) << "a load begins anew";
    EXPECT_EQ(catalogue[1].Keyword, "a\tb") << "a catalogue is no game: tabs stay";
    EXPECT_EQ(Load(catalogue, "\r\n"), "line 1: a command needs five fields with \"%\" between them");
    EXPECT_EQ(Load(catalogue, ""), "the file is empty");
}

// The choosers of the script editor count on this order.
TEST(CommandCatalogue, ShipsInTheOrderThatLookUpsNeed) {
    const CommandCatalogue catalogue = ShippedCatalogue();
    // Commands are of kind 0, the entry for all other lines is 1, conditions are 2.
    int lastKind = 0;
    for (int k = 1; k <= catalogue.Count(); ++k) {
        const std::string& keyword = catalogue[k].Keyword;
        const int kind = BeginsWith(keyword, "if") ? 2 : keyword == "(other)" ? 1 : 0;
        EXPECT_LE(lastKind, kind) << keyword;
        lastKind = kind;
        for (int later = k + 1; later <= catalogue.Count(); ++later)
            EXPECT_FALSE(BeginsWith(catalogue[later].Keyword, keyword))
                << catalogue[later].Keyword << " is never found behind " << keyword;
        EXPECT_EQ(catalogue[k].RawSyntax == "!", catalogue[k].FriendlyPrompt == "!") << keyword;
    }
    EXPECT_EQ(lastKind, 2);
}

} // namespace
} // namespace zem::test
