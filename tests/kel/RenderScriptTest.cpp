#include "kel/RenderScript.h"

#include "base/LineText.h"
#include "support/CaseFile.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace zem::test {
namespace {

CommandLookup Lookup(const std::vector<CommandDefinition>& entries) {
    CommandCatalogue catalogue;
    for (const CommandDefinition& entry : entries)
        catalogue.Append(entry);
    return CommandLookup(catalogue);
}

const std::vector<CommandDefinition> Commands = {
    {"msg", "", "", "", "Print \"$\""},
    {"clear", "!", "", "!", "|bClear|xb"},
    {"twice", "", "", "", "$ and $"},
    {"(Other) things", "", "", "", "Raw: $"},
};

std::string Render(const std::string& script, ScriptForm form,
                   const CommandLookup& lookup = Lookup(Commands)) {
    return RenderScript(script, form, InternalProcedures::ShowCall, {}, lookup, true);
}

TEST(RenderScript, ShowsEachLineByItsTemplate) {
    for (const auto& [script, plain, rich] : CasesIn<3>("rendered-scripts")) {
        EXPECT_EQ(Render(script, ScriptForm::Plain), plain) << script;
        EXPECT_EQ(Render(script, ScriptForm::Rich), rich) << script;
    }
    EXPECT_EQ(Render("jump", ScriptForm::Plain, Lookup({Commands[0]})), "Undefined command");
    EXPECT_THROW(Render("msg", ScriptForm::Plain), KelError);
}

TEST(RenderScript, ExpandsInternalProceduresByTheirExactNameAndLeavesRawScriptsAlone) {
    const CommandLookup lookup = Lookup(Commands);
    Table<Procedure> procedures;
    procedures.Append({"~Internal Procedure 1", "msg <in>\r\n"});
    const auto render = [&](const char* script, InternalProcedures internal, bool friendly) {
        return RenderScript(script, ScriptForm::Plain, internal, procedures, lookup, friendly);
    };
    const char* call = "do <~Internal Procedure 1>";
    EXPECT_EQ(render(call, InternalProcedures::Expand, true), "Print \"in\"");
    EXPECT_EQ(render(call, InternalProcedures::ShowCall, true), "Raw: do <~Internal Procedure 1>");
    EXPECT_EQ(render("do <~internal procedure 1>", InternalProcedures::Expand, true),
              "Raw: do <~internal procedure 1>");
    EXPECT_EQ(render(call, InternalProcedures::Expand, false), "msg <in>\r\n");
    EXPECT_EQ(render("msg <|bx>\r\n\r\n", InternalProcedures::Expand, false), "msg <|bx>\r\n\r\n");
}

// The tree of keywords must find what a scan from the first entry on finds.
TEST(CommandLookup, FindsTheFirstEntryInFileOrder) {
    std::mt19937 random(3);
    const auto word = [&](unsigned longest) {
        std::string text(random() % (longest + 1), ' ');
        for (char& letter : text)
            letter = "aAb "[random() % 4];
        return text;
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<CommandDefinition> entries;
        for (int k = 0; k < 6; ++k)
            entries.push_back({word(4), std::to_string(k), "", "", ""});
        if (round % 3 != 0) // an empty keyword matches every line
            std::erase_if(entries, [](const CommandDefinition& entry) { return entry.Keyword.empty(); });
        const CommandLookup lookup = Lookup(entries);
        entries.push_back({"", "none", "", "", ""});
        for (int k = 0; k < 20; ++k) {
            const std::string line = word(6);
            const CommandDefinition* found = lookup.Find(line);
            const auto expected =
                std::find_if(entries.begin(), entries.end(),
                             [&](const CommandDefinition& entry) { return BeginsWith(line, entry.Keyword); });
            ASSERT_EQ(found == nullptr ? "none" : found->RawSyntax, expected->RawSyntax) << line;
        }
    }
}

} // namespace
} // namespace zem::test
