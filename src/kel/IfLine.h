#pragma once

#include "kel/ScriptLine.h"

#include <string>
#include <string_view>
#include <vector>

/// The "if" line of a script, taken apart:
/// "if not has <key> and in <Hall> then goto <Garden> else msg <The door is locked.>"
namespace zem {

struct Condition {
    Joiner JoinedBy = Joiner::And; // nothing for the first condition
    bool Negated = false;
    std::string Keyword; // without the "if" of the catalogue's keyword: "has"
    bool HasParameter = true;
    std::string Parameter;

    bool operator==(const Condition&) const = default;
};

struct IfLine {
    std::vector<Condition> Conditions;
    std::string Then; // a script command, which may be an "if" line itself
    std::string Else; // the same; empty when there is none

    bool operator==(const IfLine&) const = default;
};

/// Takes a line apart. An "else" belongs to the nearest "if" before it that has none yet.
/// Throws KelError, which says why, for a line that is not understood.
IfLine ParseIfLine(std::string_view line);

/// Puts a line together; parsing it again gives the same parts. Throws KelError for parts of which no line
/// can be made, among them an "else" that an inner "if" without one would take for itself.
std::string WriteIfLine(const IfLine& line);

/// Conditions by themselves, as they stand in a line: "if has <key> and not in <Hall>". Throws KelError for
/// those of which no line can be made.
std::string WriteConditions(std::vector<Condition> conditions);

/// Reads them again, with or without the "if"; other lines of blanks around them do not count. Throws
/// KelError for anything else, and for a line that says what is to be done, too.
std::vector<Condition> ReadConditions(std::string_view text);

/// A condition in plain English: "the player has "key"".
std::string DescribeCondition(const Condition& condition, const CommandLookup& commands);

/// The line in plain English, its actions rendered too; the line itself when it is not understood.
std::string DescribeIfLine(std::string_view line, const CommandLookup& commands);

/// Any line of a script in plain English; the line itself when it is not understood.
std::string DescribeLine(const std::string& line, const CommandLookup& commands);

} // namespace zem
