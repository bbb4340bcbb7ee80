#include "base/LineText.h"

#include "model/GameModel.h"
#include "support/CaseFile.h"
#include "support/Games.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace zem::test {
namespace {

/// A function of two texts, which stand in one with "|" between them.
template <class Function>
auto OfTwo(Function function) {
    return [function](const std::string& texts) {
        const std::size_t bar = texts.find('|');
        return function(texts.substr(0, bar), texts.substr(bar + 1));
    };
}

const char* YesOrNo(bool value) {
    return value ? "yes" : "no";
}

TEST(LineText, TakesLinesApart) {
    using Text = std::string;
    const std::map<Text, std::function<Text(const Text&)>> functions = {
        {"BeginsWith", OfTwo([](const Text& a, const Text& b) { return YesOrNo(BeginsWith(a, b)); })},
        {"TextAfter", OfTwo([](const Text& a, const Text& b) { return Text(TextAfter(a, b)); })},
        {"GetParameter", [](const Text& text) { return Text(GetParameter(text)); }},
        {"TextAfterParameter", [](const Text& text) { return Text(TextAfterParameter(text)); }},
        {"FirstWord", [](const Text& text) { return Text(FirstWord(text)); }},
        {"CrLfToBar", [](const Text& text) { return CrLfToBar(text); }},
        {"BarToCrLf", [](const Text& text) { return BarToCrLf(text); }},
        {"WholeNumber", [](const Text& text) { return std::to_string(WholeNumber(text)); }},
        {"LeadingNumber", [](const Text& text) { return std::to_string(LeadingNumber(text)); }},
        {"IsYes", [](const Text& text) { return YesOrNo(IsYes(text)); }},
    };
    for (const auto& [function, text, outcome] : CasesIn<3>("line-text")) {
        Text result;
        const Text problem =
            ProblemOf([&, function = function, text = text] { result = functions.at(function)(text); });
        EXPECT_EQ(problem.empty() ? result : problem, outcome) << function << ": " << text;
    }
}

TEST(GameModel, StartsFromTheNewGameTemplate) {
    GameModel game = LoadBytes("define game <x>\r\nerror <badgo; No way.>\r\nend define\r\n");
    game.NextInternalProcedure = 9;
    game.Modified = true;
    NewGame(game);

    GameModel expected = GameWithErrorNames();
    expected.NextInternalProcedure = 9; // The counter outlives the game, so that no number is used twice.
    expected.KelVersion = "217";
    expected.GameInfo = "Created with ZEM 1.0";
    for (const char* name : {"intro", "win", "lose"})
        expected.TextSections.Append({name, ""});
    EXPECT_EQ(game, expected);
}

} // namespace
} // namespace zem::test
