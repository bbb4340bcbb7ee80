#include "model/CollectableDefinition.h"

#include "support/Cases.h"

#include <gtest/gtest.h>
#include <string>

namespace zem::test {
namespace {

using Type = CollectableType;

CollectableDefinition Definition(const char* name, Type type, const char* value, const char* display) {
    CollectableDefinition definition;
    definition.Name = name;
    definition.Type = type;
    definition.InitialValue = value;
    definition.Display = display;
    definition.HiddenInItems = definition.Display.empty();
    return definition;
}

CollectableDefinition HiddenAtZero(CollectableDefinition definition) {
    definition.HiddenAtZero = true;
    return definition;
}

CollectableDefinition RangeOf(CollectableDefinition definition, const char* min, const char* max) {
    definition.Min = min;
    definition.Max = max;
    return definition;
}

TEST(CollectableDefinition, IsTakenApartAndBuiltAgain) {
    for (const auto& [line, definition, rebuilt] : Cases<const char*, CollectableDefinition, const char*>{
             {"Collectable-Name p=0 [Enter display text here]",
              Definition("Collectable-Name", Type::PositiveNumber, "0", "Enter display text here"), ""},
             {"health d%=100 []", HiddenAtZero(Definition("health", Type::Percentage, "100", "")), ""},
             {"temp 0r40=20 [! degrees]",
              RangeOf(Definition("temp", Type::Range, "20", "! degrees"), "0", "40"), ""},
             {"x dn=5 [X is !]", HiddenAtZero(Definition("x", Type::AnyNumber, "5", "X is !")), ""},
             {"score p=0", Definition("score", Type::PositiveNumber, "0", ""), "score p=0 []"},
             {"score p=0 [ ! ]", Definition("score", Type::PositiveNumber, "0", "!"), "score p=0 [!]"},
             {"a  p  =7[x]y", Definition("a", Type::PositiveNumber, "7[x]y", "x"), "a p=7[x]y [x]"},
             {"a -5r-1=-3 [!]", RangeOf(Definition("a", Type::Range, "-3", "!"), "-5", "-1"), ""},
             {"a =1 []", Definition("a", Type::Range, "1", ""), "a r=1 []"},
             {"a q=1 []", Definition("a", Type::Range, "1", ""), "a r=1 []"},
             {"a P=1 []", Definition("a", Type::Range, "1", ""), "a r=1 []"},
             {"a p=1 [one] [two]", Definition("a", Type::PositiveNumber, "1", "one"), "a p=1 [one]"},
             // What lacks a part is taken as far as it goes.
             {"", Definition("", Type::Range, "", ""), " r= []"},
             {"name", Definition("name", Type::Range, "", ""), "name r= []"},
             {"name d", HiddenAtZero(Definition("name", Type::Range, "", "")), "name dr= []"},
             {"a=b p=1 [x", Definition("a=b", Type::PositiveNumber, "1", "x"), "a=b p=1 [x]"},
         }) {
        EXPECT_EQ(ParseCollectable(line), definition) << line;
        EXPECT_EQ(BuildCollectable(definition), *rebuilt != '\0' ? rebuilt : line);
    }
}

TEST(CollectableDefinition, BuildsFromTextsAsTyped) {
    CollectableDefinition definition = RangeOf(Definition("a", Type::Range, " 5 ", " x "), " 1 ", " 9 ");
    EXPECT_EQ(BuildCollectable(definition), "a 1r9=5 [ x ]");
    definition.Display.clear(); // and shown in the pane all the same
    EXPECT_EQ(BuildCollectable(definition), "a 1r9=5");
}

TEST(CollectableDefinition, TellsEverythingThatIsWrong) {
    const std::string noName = "Collectable must have a name";
    const std::string spaces = "Collectable name must not have any spaces";
    const std::string percent = "Initial value out of range for percentage collectable type (must be between "
                                "0 and 100)";
    const std::string positive = "Initial value must be positive for positive number collectable type";
    const std::string range = "Initial value must be within user-defined range";
    for (const auto& [definition, expected] : Cases<CollectableDefinition, std::string>{
             {Definition("a", Type::PositiveNumber, "0", ""), ""},
             {Definition("a", Type::PositiveNumber, "-1", ""), positive},
             {Definition("a", Type::PositiveNumber, "none", ""), ""},
             {Definition("a", Type::AnyNumber, "-1", ""), ""},
             {Definition("a", Type::Percentage, "0", ""), ""},
             {Definition("a", Type::Percentage, "100", ""), ""},
             {Definition("a", Type::Percentage, "100.4", ""), percent},
             {Definition("a", Type::Percentage, "-1 or so", ""), percent},
             {RangeOf(Definition("a", Type::Range, "11", ""), "0", "10"), range},
             {RangeOf(Definition("a", Type::Range, "10", ""), "0", "10"), ""},
             {RangeOf(Definition("a", Type::Range, "99999999999", ""), "0", "1e300"), ""},
             {RangeOf(Definition("a", Type::Range, "-1", ""), "", "10"), range},
             {Definition("my score", Type::AnyNumber, "1", ""), spaces},
             {Definition("", Type::Percentage, "200", ""), noName + percent},
         }) {
        std::string messages;
        for (const CollectableProblem& problem : CheckCollectable(definition))
            messages += problem.message;
        EXPECT_EQ(messages, expected) << BuildCollectable(definition);
    }
}

} // namespace
} // namespace zem::test
