#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The line that defines a collectable, a counter of the game: name, type, initial value and display text, as
/// in "temp 0r40=20 [! degrees]".
namespace zem {

/// In the order in which the types are listed.
enum class CollectableType { PositiveNumber, AnyNumber, Percentage, Range };

/// A definition line taken apart. All texts are as typed.
struct CollectableDefinition {
    std::string Name;
    CollectableType Type = CollectableType::PositiveNumber;
    std::string Min; // of a range
    std::string Max; // of a range
    std::string InitialValue;
    std::string Display;
    bool HiddenAtZero = false;
    bool HiddenInItems = false; // then there is no display text

    bool operator==(const CollectableDefinition&) const = default;
};

/// Takes a line apart. Any line will do: what is missing in it is empty.
CollectableDefinition ParseCollectable(std::string_view line);

/// The line for a definition. Parsing it gives the definition back, as long as its texts are trimmed and hold
/// none of the signs that separate them, and as long as one with an empty display text is hidden.
std::string BuildCollectable(const CollectableDefinition& definition);

/// Something that keeps a definition from being used.
struct CollectableProblem {
    enum Field { NameField, ValueField };
    Field field;
    const char* message;
};

/// Everything that is wrong with a definition, in the order in which the author is told.
std::vector<CollectableProblem> CheckCollectable(const CollectableDefinition& definition);

} // namespace zem
