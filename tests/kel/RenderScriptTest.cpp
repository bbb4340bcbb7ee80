#include "kel/RenderScript.h"

#include "base/LineText.h"
#include "support/CaseFile.h"

#include <gtest/gtest.h>
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

TEST(RenderScript, ForReadingShowsALineThatCannotBeRenderedAsItIs) {
    Table<Procedure> procedures;
    procedures.Append({"~p", "msg\r\nclear\r\n"});
    const auto render = [&](const char* script, ScriptForm form) {
        return RenderForReading(script, form, InternalProcedures::Expand, procedures, Lookup(Commands), true);
    };
    for (const auto& [script, plain, rich] : CasesIn<3>("rendered-scripts")) {
        EXPECT_EQ(render(script.c_str(), ScriptForm::Plain), plain) << script;
        EXPECT_EQ(render(script.c_str(), ScriptForm::Rich), rich) << script;
    }
    EXPECT_EQ(render("msg <a>\r\n\r\nmsg\r\nclear", ScriptForm::Rich),
              "Print \"a\"|cr;\r\nmsg|cr;\r\n|bClear|xb|cr");
    EXPECT_EQ(render("msg\r\nmsg <b>", ScriptForm::Plain), "msgPrint \"b\"");
    EXPECT_EQ(render("do <~p>", ScriptForm::Rich), "msg|cr;\r\n|bClear|xb|cr");
    EXPECT_EQ(render("do <~p", ScriptForm::Plain), "Raw: do <~p") << "a call that is none";
}

TEST(CommandLookup, FindsByTheBeginningInFileOrderOrByTheWholeKeyword) {
    const CommandLookup lookup =
        Lookup({{"lose all", "all", "", "", ""}, {"LOSE", "one", "", "", ""}, {"lose", "two", "", "", ""}});
    const auto found = [&](const char* line) {
        const CommandDefinition* entry = lookup.Find(line);
        return entry == nullptr ? std::string("none") : entry->RawSyntax;
    };
    EXPECT_EQ(found("  lose ALL <x>"), "all");
    EXPECT_EQ(found("loses"), "one");
    EXPECT_EQ(found("los"), "none");
    EXPECT_EQ(lookup.FindKeyword("lose")->definition->RawSyntax, "one");
    EXPECT_EQ(lookup.FindKeyword("loses"), nullptr);
}

} // namespace
} // namespace zem::test
