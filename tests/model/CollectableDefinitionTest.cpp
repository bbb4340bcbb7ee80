#include "model/CollectableDefinition.h"

#include "support/CaseFile.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace zem::test {
namespace {

/// The parts joined with "|".
std::string Parts(const CollectableDefinition& definition) {
    static constexpr std::array Types = {"positive number", "any number", "percentage", "range"};
    std::string parts = definition.Name + '|' + Types.at(static_cast<std::size_t>(definition.Type));
    for (const std::string& text :
         {definition.Min, definition.Max, definition.InitialValue, definition.Display})
        parts += '|' + text;
    return parts + (definition.HiddenAtZero ? "|hidden at zero" : "") +
           (definition.HiddenInItems ? "|hidden in items" : "");
}

std::string Problems(const CollectableDefinition& definition) {
    std::string messages;
    for (const CollectableProblem& problem : CheckCollectable(definition))
        messages += problem.message;
    return messages;
}

TEST(CollectableDefinition, IsTakenApartCheckedAndBuiltAgain) {
    for (const auto& [line, parts, rebuilt, problems] : CasesIn<4>("collectables")) {
        const CollectableDefinition definition = ParseCollectable(line);
        EXPECT_EQ(Parts(definition), parts) << line;
        EXPECT_EQ(BuildCollectable(definition), rebuilt);
        EXPECT_EQ(Problems(definition), problems) << line;
    }
}

TEST(CollectableDefinition, IsBuiltFromTextsAsTyped) {
    CollectableDefinition typed{"my score", CollectableType::Range, " 1 ", " 9 ", " 5 ", " x "};
    EXPECT_EQ(BuildCollectable(typed), "my score 1r9=5 [ x ]");
    EXPECT_EQ(Problems(typed), "Collectable name must not have any spaces");
    typed.Display.clear();
    EXPECT_EQ(BuildCollectable(typed), "my score 1r9=5");
}

} // namespace
} // namespace zem::test
