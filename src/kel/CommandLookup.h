#pragma once

#include "kel/CommandCatalogue.h"
#include "kel/ParameterSyntax.h"

#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// An entry of the catalogue, made ready for looking up.
struct CommandEntry {
    const CommandDefinition* definition = nullptr;
    std::string keyword; // in small letters
    ParameterSyntax syntax;
};

/// Finds the catalogue entry of a script line.
class CommandLookup {
public:
    /// @param catalogue  is copied, which costs a pointer
    explicit CommandLookup(const CommandCatalogue& catalogue);

    CommandLookup(const CommandLookup&) = delete; // the entries are those of this very object
    CommandLookup& operator=(const CommandLookup&) = delete;

    /// The first entry in file order whose keyword the line begins with, whatever follows: how lines are
    /// shown. Null when there is none.
    const CommandDefinition* Find(std::string_view line) const;

    /// The first entry of exactly this keyword, whatever its capitals: what a line means. Null when there is
    /// none.
    const CommandEntry* FindKeyword(std::string_view keyword) const;

    /// The entry for lines that match no other; null when the catalogue has none.
    const CommandDefinition* Other() const { return other_; }

    const CommandCatalogue& Catalogue() const { return catalogue_; }

private:
    CommandCatalogue catalogue_;
    std::vector<CommandEntry> entries_; // in file order
    const CommandDefinition* other_ = nullptr;
};

} // namespace zem
