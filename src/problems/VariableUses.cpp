#include "problems/VariableUses.h"

#include "base/LineText.h"
#include "model/Texts.h"
#include "problems/NameUses.h"

#include <algorithm>
#include <array>

namespace zem::problems {

namespace {

/// Whether a text counts as a number, or may turn out to be one.
bool MayBeNumber(std::string_view value) {
    return IsMadeOfVariables(value) || value.find_first_of("0123456789") != std::string_view::npos;
}

enum class Meaning { Either, Text, Number };

struct VariableCommand {
    std::string_view keyword;
    bool isSetter;
    Meaning meaning; // of the variable; Either where the value tells
};

constexpr std::array<VariableCommand, 14> Commands = {{{"set", true, Meaning::Either},
                                                       {"append", true, Meaning::Text},
                                                       {"ask", true, Meaning::Either},
                                                       {"add", true, Meaning::Number},
                                                       {"subtract", true, Meaning::Number},
                                                       {"multiply", true, Meaning::Number},
                                                       {"roll", true, Meaning::Number},
                                                       {"if equal", false, Meaning::Either},
                                                       {"if differ", false, Meaning::Either},
                                                       {"if contains", false, Meaning::Text},
                                                       {"if empty", false, Meaning::Either},
                                                       {"if least", false, Meaning::Number},
                                                       {"if more", false, Meaning::Number},
                                                       {"if less", false, Meaning::Number}}};

using Variables = std::map<std::string_view, VariableUses>;

void AddCalls(const CheckedGame& game, const VariableCommand& command, Variables& variables) {
    for (const CheckedCall* call : game.CallsOf(command.keyword)) {
        if (call->parts.empty() || call->Part(0).empty() || IsMadeOfVariables(call->Part(0)))
            continue;
        VariableUses& uses = variables[call->Part(0)];
        const Place place = call->At(0);
        (command.isSetter ? uses.set : uses.asked).push_back(place);
        const bool isText =
            command.meaning == Meaning::Text ||
            (command.keyword == "set" && !call->Part(1).empty() && !MayBeNumber(call->Part(1)));
        if (isText)
            uses.asText.push_back(place);
        if (command.meaning == Meaning::Number)
            uses.asNumber.push_back(place);
        if (command.isSetter && !isText)
            uses.mayBeNumber = true;
        if (command.isSetter && command.keyword != "ask")
            uses.isPlayers = false;
    }
}

/// Names between two signs in a text; `isPattern` for one in which a player's words are caught.
void AddSigns(const Place& place, std::string_view text, bool isPattern, Variables& variables) {
    ForEachVariable(text, [&](TextRange range, char sign) {
        const std::string_view name = range.Of(text);
        const bool couldBeOne = name.front() != ' ' && name.back() != ' ' && name.size() <= 40 &&
                                name.find_first_of("<>|\r\n") == std::string_view::npos;
        if (!couldBeOne || (isPattern && sign == '%'))
            return false;
        Place at = place;
        at.bytes = {place.bytes.begin + range.begin, place.bytes.begin + range.end};
        VariableUses& uses = variables[name];
        if (isPattern) {
            uses.typed.push_back(at);
            uses.mayBeNumber = true;
        } else {
            uses.prints.push_back({at, sign});
        }
        return true;
    });
}

} // namespace

AllFlags CollectFlags(const CheckedGame& game) {
    AllFlags flags;
    const auto add = [&](std::string_view keyword, std::vector<Place> FlagUses::*uses) {
        for (const CheckedCall* call : game.CallsOf(keyword)) {
            if (call->parts.empty() || call->Part(0).empty())
                continue;
            if (IsMadeOfVariables(call->Part(0)))
                flags.areSomeMadeOfVariables = true;
            else
                (flags.uses[call->Part(0)].*uses).push_back(call->At(0));
        }
    };
    add("flag on", &FlagUses::set);
    add("flag flip", &FlagUses::set);
    add("flag off", &FlagUses::cleared);
    add("if flag", &FlagUses::asked);
    add("while", &FlagUses::asked);
    return flags;
}

std::map<std::string_view, VariableUses> CollectVariables(const CheckedGame& game,
                                                          const std::vector<PrintedText>& texts) {
    Variables variables;
    for (const VariableCommand& command : Commands)
        AddCalls(game, command, variables);
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Pattern && text.find('#') != std::string::npos)
            AddSigns(place, text, true, variables);
    });
    for (const PrintedText& text : texts)
        if (text.call == nullptr && HasVariableSign(text.text))
            AddSigns(text.place, text.text, false, variables);
    for (const CheckedCall& call : game.Calls())
        for (std::size_t part = 0; part < call.parts.size(); ++part)
            if (HasVariableSign(call.Part(part)))
                AddSigns(call.At(part), call.Part(part), false, variables);
    if (!game.CallsOf("every object").empty() || !game.CallsOf("every character").empty()) {
        VariableUses& thing = variables["thing"]; // holds the name while the procedure runs
        thing.typed.push_back({});
        thing.mayBeNumber = true;
        thing.isPlayers = false;
    }
    return variables;
}

} // namespace zem::problems
