#include "kel/CommandLookup.h"

#include "base/LineText.h"

namespace zem {

CommandLookup::CommandLookup(const CommandCatalogue& catalogue) : catalogue_(catalogue) {
    for (const CommandDefinition& definition : catalogue_) {
        const std::size_t k = entries_.size();
        entries_.push_back(&definition);
        Add(definition.Keyword, k);
        if (other_ == 0 && BeginsWith(definition.Keyword, "(other)"))
            other_ = k;
    }
}

std::size_t CommandLookup::Next(std::size_t node, char letter) const {
    for (const auto& [itsLetter, next] : nodes_[node].next)
        if (itsLetter == letter)
            return next;
    return 0;
}

void CommandLookup::Add(std::string_view keyword, std::size_t entry) {
    std::size_t node = 0;
    for (const char c : keyword) {
        const char letter = Lower(c);
        std::size_t next = Next(node, letter);
        if (next == 0) {
            next = nodes_.size();
            nodes_.emplace_back();
            nodes_[node].next.emplace_back(letter, next);
        }
        node = next;
    }
    std::size_t& itsEntry = nodes_[node].entry;
    if (itsEntry == 0)
        itsEntry = entry;
}

const CommandDefinition* CommandLookup::Find(std::string_view line) const {
    std::size_t found = nodes_.front().entry; // an empty keyword matches every line
    std::size_t node = 0;
    for (const char c : TrimLeft(line)) {
        node = Next(node, Lower(c));
        if (node == 0)
            break;
        const std::size_t entry = nodes_[node].entry;
        if (entry != 0 && (found == 0 || entry < found))
            found = entry;
    }
    return entries_[found];
}

const CommandDefinition* CommandLookup::FindKeyword(std::string_view keyword) const {
    std::size_t node = 0;
    for (const char c : keyword) {
        node = Next(node, Lower(c));
        if (node == 0)
            return nullptr;
    }
    return entries_[nodes_[node].entry];
}

} // namespace zem
