#include "kel/ScriptLine.h"

#include "base/LineText.h"
#include "support/CaseFile.h"
#include "support/Catalogue.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace zem::test {
namespace {

class ScriptLines : public testing::Test {
protected:
    /// A call as "keyword(parameter)rest", with a "?" before a keyword that the catalogue does not know.
    static std::string Text(std::string_view line, const ScriptCall& call) {
        std::string text(call.entry == nullptr ? "?" : "");
        text.append(call.keyword.Of(line));
        if (call.hasParameter)
            text.append("(").append(call.parameter.Of(line)).append(")").append(call.rest.Of(line));
        return text;
    }

    static std::string Text(std::string_view line, const ScriptLine& parsed, std::size_t at) {
        const ScriptAction& action = parsed.actions[at];
        if (!action.IsIf()) {
            EXPECT_EQ(action.whole.Of(line), Trim(action.whole.Of(line)));
            return Text(line, action.call);
        }
        std::string text = "[";
        for (std::size_t k = 0; k < action.conditionCount; ++k) {
            const ScriptCondition& condition = parsed.conditions[action.firstCondition + k];
            text += k == 0 ? "" : condition.joiner == Joiner::And ? " & " : " | ";
            text += (condition.isNegated ? "!" : "") + Text(line, condition.call);
        }
        text += "] {" + Text(line, parsed, action.thenAction) + "}";
        if (action.elseAction != 0)
            text += " {" + Text(line, parsed, action.elseAction) + "}";
        return text;
    }

    std::string Parts(std::string_view line) const {
        const ScriptLine parsed = TakeApart(line, commands);
        if (parsed.problem != LineProblem::None)
            return "at " + std::to_string(parsed.problemAt) + ": " + Explain(parsed.problem);
        return parsed.actions.empty() ? "nothing" : Text(line, parsed, 0);
    }

    /// Every name with the number of its kind.
    std::string Names(std::string_view line) const {
        std::string names;
        ForEachName(line, commands, [&](TextRange range, NameKind kind) {
            names += (names.empty() ? "" : ", ") + std::string(KindWords[static_cast<std::size_t>(kind)]) +
                     ' ' + std::string(range.Of(line));
        });
        return names;
    }

    static constexpr const char* KindWords[] = {"none",        "room",      "object", "character", "thing",
                                                "item",        "procedure", "text",   "menu",      "variable",
                                                "collectable", "flag",      "timer",  "file"};

    const CommandLookup commands{ShippedCatalogue()};
};

TEST_F(ScriptLines, AreTakenApart) {
    for (const auto& [line, parts] : CasesIn<2>("script-lines"))
        EXPECT_EQ(Parts(line), parts) << line;
    std::string deep;
    for (int k = 0; k < 100'000; ++k)
        deep += "if a then ";
    EXPECT_EQ(Parts(deep + "x"), "at 1000: too many \"if\" stand inside one another");
}

TEST_F(ScriptLines, TellEveryNameWithItsKind) {
    for (const auto& [line, names] : CasesIn<2>("names-in-lines"))
        EXPECT_EQ(Names(line), names) << line;
}

// A sign between two variables belongs to one of them only, and which one only the caller knows.
TEST_F(ScriptLines, LeaveItToTheCallerWhatIsAVariable) {
    std::string found;
    ForEachVariable("5% of the %gold% #a#b#c#", [&](TextRange range, char sign) {
        found += sign + std::to_string(range.begin) + ' ';
        return range.Size() < 5;
    });
    EXPECT_EQ(found, "%2 %11 #18 #22 ");
}

TEST_F(ScriptLines, TellThePartAtACaret) {
    struct {
        const char* syntax;
        const char* parameter;
        std::size_t caret;
        const char* part;
        NameKind kind;
    } const cases[] = {
        {"object; room", "lamp;  Hall ", 0, "lamp", NameKind::Object},
        {"object; room", "lamp;  Hall ", 4, "lamp", NameKind::Object},
        {"object; room", "lamp;  Hall ", 5, "Hall", NameKind::Room},
        {"object; room", "lamp; a; b", 10, "a; b", NameKind::Room},
        {"procedure; Procedure", "a; b; c", 7, "c", NameKind::Procedure},
        {"Room ", "a; b", 4, "a; b", NameKind::Room},
        {"number; procedure", "", 0, "", NameKind::None},
        {"!", "", 0, "", NameKind::None},
    };
    for (const auto& [syntax, parameter, caret, part, kind] : cases) {
        const ParameterPart found = PartAt(parameter, ReadSyntax(syntax), caret);
        EXPECT_EQ(found.range.Of(parameter), part) << parameter;
        EXPECT_EQ(found.kind, kind) << parameter;
    }
}

} // namespace
} // namespace zem::test
