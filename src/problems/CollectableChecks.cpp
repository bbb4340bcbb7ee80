// How much of a collectable there can be.
#include "base/LineText.h"
#include "model/CollectableDefinition.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/TextNumbers.h"

#include <algorithm>
#include <map>
#include <optional>

namespace zem::problems {

namespace {

constexpr double Endless = 2147483647;

struct Bounds {
    double lowest = -Endless;
    double highest = Endless;
};

Bounds BoundsOf(const CollectableDefinition& definition) {
    switch (definition.Type) {
    case CollectableType::PositiveNumber:
        return {0, Endless};
    case CollectableType::AnyNumber:
        break;
    case CollectableType::Percentage:
        return {0, 100};
    case CollectableType::Range: {
        const double min = NumberIn(definition.Min).value_or(-Endless);
        const double max = NumberIn(definition.Max).value_or(Endless);
        return {std::min(min, max), std::max(min, max)};
    }
    }
    return {};
}

/// The settings between the name and the display.
std::string_view SettingsOf(std::string_view definition) {
    const std::size_t blank = std::min(definition.find(' '), definition.size());
    const std::string_view rest = definition.substr(blank);
    return Trim(rest.substr(0, rest.find('[')));
}

/// Whether they are a type, "=" and a number.
bool IsUnderstood(std::string_view settings, const CollectableDefinition& definition) {
    const std::size_t equals = settings.find('=');
    if (equals == std::string_view::npos || !NumberIn(settings.substr(equals + 1)))
        return false;
    std::string_view type = settings.substr(0, equals);
    if (type.starts_with('d'))
        type.remove_prefix(1);
    return type == "p" || type == "n" || type == "%" ||
           (NumberIn(definition.Min).has_value() && NumberIn(definition.Max).has_value());
}

std::string NumberText(double number) {
    return std::to_string(static_cast<long>(number));
}

Fix Rewrite(std::string button, const Place& place, const std::string& before,
            const CollectableDefinition& definition) {
    return SetField(std::move(button), place, before, BuildCollectable(definition));
}

void CheckRange(const Place& place, const std::string& text, const CollectableDefinition& definition,
                Findings& findings) {
    const auto min = NumberIn(definition.Min);
    const auto max = NumberIn(definition.Max);
    if (definition.Type == CollectableType::Range && min && max && *min > *max) {
        CollectableDefinition turned = definition;
        std::swap(turned.Min, turned.Max);
        findings
            .Add("C12", place,
                 "The lowest value, " + definition.Min + ", is above the highest, " + definition.Max + '.')
            .fixes = {Rewrite("Swap them", place, text, turned)};
    }
    const Bounds bounds = BoundsOf(definition);
    const double value = NumberIn(definition.InitialValue).value_or(0);
    if (value >= bounds.lowest && value <= bounds.highest)
        return;
    CollectableDefinition inside = definition;
    inside.InitialValue = NumberText(std::clamp(value, bounds.lowest, bounds.highest));
    findings
        .Add("C11", place,
             "It begins with " + definition.InitialValue +
                 ", which is outside of its range; the game begins with " + inside.InitialValue + '.')
        .fixes = {Rewrite("Begin with " + inside.InitialValue, place, text, inside)};
}

void CheckDisplay(const Place& place, const std::string& text, const CollectableDefinition& definition,
                  Findings& findings) {
    const std::string& shown = definition.Display;
    if (std::count(shown.begin(), shown.end(), '*') % 2 != 0)
        findings.Add("C13", place,
                     "One \"*\" in " + QuoteShortly(shown) + " has no other, so the player reads it.");
    if (shown.empty() || shown.find('!') != std::string::npos)
        return;
    CollectableDefinition showing = definition;
    showing.Display = "! " + shown;
    findings
        .Add("C14", place, QuoteShortly(shown) + " has no \"!\", so the player never reads how much it is.")
        .fixes = {Rewrite("Put ! in front", place, text, showing)};
}

void FindOddCollectables(const CheckedGame& game, Findings& findings) {
    int entry = 0;
    for (const Collectable& collectable : game.Game().Collectables) {
        const Place place = Place::Of({{FieldId::GameCollectables, ++entry}}, FieldId::CollectableDefinition);
        const CollectableDefinition definition = ParseCollectable(collectable.Definition);
        const std::string_view settings = SettingsOf(collectable.Definition);
        const bool isOpen = collectable.Definition.find('[') != std::string::npos &&
                            collectable.Definition.find(']') == std::string::npos;
        if (isOpen) {
            Problem& problem = findings.Add(
                "C10", place, "What the player sees of it begins with \"[\" and has no \"]\" at its end.");
            problem.level = Level::Warning;
            problem.fixes = {
                SetField("Add ] at the end", place, collectable.Definition, collectable.Definition + ']')};
        }
        if (!IsUnderstood(settings, definition))
            findings.Add("C10", place,
                         settings.empty() ? "It has no settings, so nothing says what kind of number it is."
                                          : "The settings " + QuoteShortly(settings) +
                                                " are not a type, \"=\" and a number, as in \"p=0\".");
        else
            CheckRange(place, collectable.Definition, definition, findings);
        CheckDisplay(place, collectable.Definition, definition, findings);
    }
}

void FindAmountsBeyond(const CheckedGame& game, Findings& findings) {
    std::map<std::string_view, Bounds> all;
    for (const Collectable& collectable : game.Game().Collectables)
        all.try_emplace(collectable.Name, BoundsOf(ParseCollectable(collectable.Definition)));
    for (const char* keyword : {"set amount", "gain", "spend", "if amount"})
        for (const CheckedCall* call : game.CallsOf(keyword)) {
            const auto bounds = all.find(call->Part(0));
            const auto amount = NumberIn(call->Part(1));
            if (bounds == all.end() || !amount)
                continue;
            const auto [lowest, highest] = bounds->second;
            if (call->isCondition && *amount == lowest) {
                findings.Add("C15", call->At(1),
                             "There is never less of " + QuoteShortly(call->Part(0)) + " than " +
                                 NumberText(lowest) + ", so this condition is " +
                                 (call->isNegated ? "never true." : "always true."));
                continue;
            }
            const bool isChange =
                call->call->entry->keyword == "gain" || call->call->entry->keyword == "spend";
            const double least = isChange ? -Endless : lowest;
            const double most = isChange ? highest - lowest : highest;
            if (*amount >= least && *amount <= most)
                continue;
            const std::string bound = NumberText(std::clamp(*amount, least, most));
            findings
                .Add("C15", call->At(1),
                     QuoteShortly(call->Part(0)) + " goes from " + NumberText(lowest) + " to " +
                         NumberText(highest) + ", and this is " + std::string(call->Part(1)) + '.')
                .fixes = {ReplaceBytes(ChangeTo(bound), call->At(1), call->Part(1), bound)};
        }
}

/// Whether an earlier or the same line of the script asks for an amount of the collectable.
bool IsAskedBefore(const CheckedGame& game, const CheckedCall& spend) {
    const auto& asked = game.CallsOf("if amount");
    return std::any_of(asked.begin(), asked.end(), [&](const CheckedCall* call) {
        return call->Part(0) == spend.Part(0) &&
               call->line->place.WholeField() == spend.line->place.WholeField() && call->line <= spend.line;
    });
}

void FindSpendingUnasked(const CheckedGame& game, Findings& findings) {
    for (const CheckedCall* call : game.CallsOf("spend"))
        if (!IsAskedBefore(game, *call))
            findings.Add("C16", call->line->At(call->call->keyword),
                         "Nothing in this script asks first whether there is enough of " +
                             QuoteShortly(call->Part(0)) + '.');
}

} // namespace

std::span<const Check> CollectableChecks() {
    static constexpr Check Rows[] = {
        {"C10", Level::Error, "Settings of collectables that are not understood", FindOddCollectables},
        {"C11", Level::Error, "Collectables that begin outside of their range", FindOddCollectables},
        {"C12", Level::Error, "Ranges with a lowest value above the highest", FindOddCollectables},
        {"C13", Level::Warning, "Stars that have no other", FindOddCollectables},
        {"C14", Level::Hint, "Displays without a value", FindOddCollectables},
        {"C15", Level::Warning, "Amounts beyond the range", FindAmountsBeyond},
        {"C16", Level::Hint, "Spending without asking", FindSpendingUnasked, true},
    };
    return Rows;
}

} // namespace zem::problems
