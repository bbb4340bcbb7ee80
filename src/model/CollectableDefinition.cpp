#include "model/CollectableDefinition.h"

#include "base/LineText.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace zem {

namespace {

/// The text before the first separator, and what follows it; the whole text and nothing where there is none.
struct Split {
    std::string_view before;
    std::string_view after;

    Split(std::string_view text, char separator)
        : before(text.substr(0, text.find(separator))),
          after(text.substr(before.size() == text.size() ? text.size() : before.size() + 1)) {}
};

/// In the order of the types; the last type, a range, has its limits instead.
constexpr std::string_view TypeCodes[] = {"p", "n", "%"};

void ParseType(std::string_view token, CollectableDefinition& definition) {
    if (token.starts_with('d')) {
        definition.HiddenAtZero = true;
        token.remove_prefix(1);
    }
    const auto* code = std::find(std::begin(TypeCodes), std::end(TypeCodes), token);
    definition.Type = static_cast<CollectableType>(std::distance(std::begin(TypeCodes), code));
    if (definition.Type == CollectableType::Range && token.find('r') != std::string_view::npos) {
        const Split range(token, 'r');
        definition.Min = range.before;
        definition.Max = range.after;
    }
}

std::string TypeCode(const CollectableDefinition& definition) {
    if (definition.Type != CollectableType::Range)
        return std::string(TypeCodes[static_cast<std::size_t>(definition.Type)]);
    return std::string(Trim(definition.Min)).append("r").append(Trim(definition.Max));
}

} // namespace

CollectableDefinition ParseCollectable(std::string_view line) {
    CollectableDefinition definition;
    const Split nameAndRest(line, ' ');
    definition.Name = nameAndRest.before;
    const Split typeAndValue(nameAndRest.after, '=');
    ParseType(Trim(typeAndValue.before), definition);
    definition.InitialValue = Split(typeAndValue.after, ' ').before;
    definition.Display = Trim(Split(Split(line, '[').after, ']').before);
    definition.HiddenInItems = definition.Display.empty();
    return definition;
}

std::string BuildCollectable(const CollectableDefinition& definition) {
    std::string line = definition.Name + ' ';
    if (definition.HiddenAtZero)
        line += 'd';
    line.append(TypeCode(definition)).append("=").append(Trim(definition.InitialValue));
    if (definition.HiddenInItems)
        line += " []";
    else if (!definition.Display.empty())
        line.append(" [").append(definition.Display).append("]");
    return line;
}

std::vector<CollectableProblem> CheckCollectable(const CollectableDefinition& definition) {
    const double value = LeadingReal(definition.InitialValue);
    const CollectableType type = definition.Type;
    std::vector<CollectableProblem> problems;
    if (definition.Name.empty())
        problems.push_back({CollectableProblem::NameField, "Collectable must have a name"});
    if (definition.Name.find(' ') != std::string::npos)
        problems.push_back({CollectableProblem::NameField, "Collectable name must not have any spaces"});
    if (type == CollectableType::Percentage && (value < 0 || value > 100))
        problems.push_back({CollectableProblem::ValueField,
                            "Initial value out of range for percentage collectable type (must be between 0 "
                            "and 100)"});
    if (type == CollectableType::PositiveNumber && value < 0)
        problems.push_back({CollectableProblem::ValueField,
                            "Initial value must be positive for positive number collectable type"});
    if (type == CollectableType::Range &&
        (value < LeadingReal(definition.Min) || value > LeadingReal(definition.Max)))
        problems.push_back(
            {CollectableProblem::ValueField, "Initial value must be within user-defined range"});
    return problems;
}

} // namespace zem
