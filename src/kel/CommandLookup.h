#pragma once

#include "kel/CommandCatalogue.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace zem {

/// Finds the catalogue entry of a script line without looking through the whole catalogue.
class CommandLookup {
public:
    /// @param catalogue  is copied, which costs a pointer
    explicit CommandLookup(const CommandCatalogue& catalogue);

    CommandLookup(const CommandLookup&) = delete; // the entries are those of this very object
    CommandLookup& operator=(const CommandLookup&) = delete;

    /// The first entry in file order whose keyword the line begins with; null when there is none.
    const CommandDefinition* Find(std::string_view line) const;

    /// The first entry of exactly this keyword, whatever its capitals; null when there is none.
    const CommandDefinition* FindKeyword(std::string_view keyword) const;

    /// The entry for lines that match no other; null when the catalogue has none.
    const CommandDefinition* Other() const { return entries_[other_]; }

    const CommandCatalogue& Catalogue() const { return catalogue_; }

private:
    /// A place in the tree of all keywords, letter by letter.
    struct Node {
        std::size_t entry = 0; // the first entry whose keyword ends here, from 1; 0 for none
        std::vector<std::pair<char, std::size_t>> next;
    };

    std::size_t Next(std::size_t node, char letter) const; // 0, the root, when no keyword goes on so
    void Add(std::string_view keyword, std::size_t entry);

    CommandCatalogue catalogue_;
    std::vector<Node> nodes_ = {Node()};
    std::vector<const CommandDefinition*> entries_ = {nullptr}; // by number, from 1
    std::size_t other_ = 0;
};

} // namespace zem
