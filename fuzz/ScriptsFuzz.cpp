// Any text as a script: it renders or lacks a parameter; codes become words without a bar; an "if" line that
// is understood is understood in the same way when it is written again.
#include "game/GameNames.h"
#include "kel/FormatCodes.h"
#include "kel/IfLine.h"
#include "kel/RenderScript.h"
#include "kel/ScriptLine.h"
#include "model/GameModel.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

const zem::CommandLookup& Commands() {
    static const zem::CommandLookup commands([] {
        zem::CommandCatalogue catalogue;
        catalogue.Append({"msg", "message", "Print", "What", "|cbPrint \"|cl$|cb\""});
        catalogue.Append({"do", "procedure", "Do", "What", "Do $"});
        catalogue.Append({"set", "variable; value", "Set", "What", "Set $"});
        catalogue.Append({"(other)", "message", "Other", "What", "$ $"});
        catalogue.Append({"if has", "item", "has", "What", "If the player has $ ..."});
        return catalogue;
    }());
    return commands;
}

void CheckIfLine(const std::string& line) {
    zem::IfLine parsed;
    try {
        parsed = zem::ParseIfLine(line);
    } catch (const zem::KelError&) {
        return;
    }
    if (!(zem::ParseIfLine(zem::WriteIfLine(parsed)) == parsed))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string script(reinterpret_cast<const char*>(data), size);
    if (zem::FormatCodesToText(script, true).find('|') != std::string::npos ||
        zem::FormatCodesToText(script, false).find('|') != std::string::npos)
        std::abort();
    std::size_t shown = 0;
    zem::ForEachFormattedRun(script,
                             [&](std::string_view run, const zem::TextFormat&) { shown += run.size(); });
    if (shown > size)
        std::abort();
    zem::GameModel game;
    game.Procedures.Append({"~p", script});
    for (const zem::ScriptForm form : {zem::ScriptForm::Plain, zem::ScriptForm::Rich})
        try {
            zem::RenderScript(script, form, zem::InternalProcedures::Expand, game.Procedures, Commands(),
                              true);
        } catch (const zem::KelError&) {
            // A command may lack its parameter.
        }
    const std::string line = script.substr(0, script.find("\r\n"));
    CheckIfLine(line);
    zem::DescribeIfLine(line, Commands());
    zem::PartAt(line, zem::ReadSyntax("variable; value"), line.size() / 2);
    zem::ForEachName(line, Commands(), [&](zem::TextRange range, zem::NameKind) {
        if (range.IsEmpty() || range.end > line.size())
            std::abort();
    });
    zem::GameNames(game, zem::NameKind::Variable, Commands());
    return 0;
}
