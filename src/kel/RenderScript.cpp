#include "kel/RenderScript.h"

#include "base/LineText.h"
#include "kel/FormatCodes.h"

#include <optional>
#include <string_view>

namespace zem {

namespace {

std::string ExpandInternal(const std::string& script, const Table<Procedure>& procedures) {
    if (!BeginsWith(script, "do <~"))
        return script;
    const std::string_view name = GetParameter(script);
    for (const Procedure& procedure : procedures)
        if (procedure.Name == name)
            return procedure.Script;
    return script;
}

/// One line, its codes already turned into words, in plain English.
std::string RenderLine(const std::string& line, const CommandLookup& commands) {
    const CommandDefinition* command = commands.Find(line);
    const bool isOther = command == nullptr;
    if (isOther)
        command = commands.Other();
    if (command == nullptr)
        return "Undefined command";
    std::string text = command->FriendlyTemplate;
    const std::size_t place = text.find('$'); // only the first one stands for the parameter
    if (place != std::string::npos)
        text.replace(place, 1, isOther ? std::string_view(line) : GetParameter(line));
    return text;
}

} // namespace

std::string RenderScript(const std::string& script, ScriptForm form, InternalProcedures internal,
                         const Table<Procedure>& procedures, const CommandLookup& commands, bool friendly) {
    const std::string expanded =
        internal == InternalProcedures::Expand ? ExpandInternal(script, procedures) : script;
    if (!friendly)
        return expanded;
    std::string result;
    for (const std::string_view coded : SplitAt(expanded, "\r\n")) {
        const std::string line = FormatCodesToText(coded, true);
        if (Trim(line).empty())
            continue;
        const std::string text = RenderLine(line, commands);
        if (form == ScriptForm::Plain)
            result += FormatCodesToText(text, false);
        else
            result.append(text).append("|cr;\r\n");
    }
    // The last line keeps its colour code, but no semicolon.
    if (form == ScriptForm::Rich && !result.empty())
        result.resize(result.size() - 3);
    return result;
}

namespace {

/// Nothing where the script cannot be rendered.
template <class... Arguments>
std::optional<std::string> TryRender(const Arguments&... arguments) {
    try {
        return RenderScript(arguments...);
    } catch (const KelError&) {
        return std::nullopt;
    }
}

} // namespace

std::string RenderForReading(const std::string& script, ScriptForm form, InternalProcedures internal,
                             const Table<Procedure>& procedures, const CommandLookup& commands,
                             bool friendly) {
    if (const auto whole = TryRender(script, form, internal, procedures, commands, friendly))
        return *whole;
    const std::string raw = TryRender(script, form, internal, procedures, commands, false).value_or(script);
    const bool isRich = form == ScriptForm::Rich;
    std::string result;
    for (const std::string_view line : SplitAt(raw, "\r\n")) {
        if (Trim(line).empty())
            continue;
        const auto rendered =
            TryRender(std::string(line), form, InternalProcedures::ShowCall, procedures, commands, friendly);
        result += isRich && !result.empty() ? ";\r\n" : "";
        result += rendered.value_or(std::string(line) + (isRich ? "|cr" : ""));
    }
    return result;
}

} // namespace zem
