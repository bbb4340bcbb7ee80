#include "script/CommandLookup.h"

#include "model/LineText.h"

namespace zem {

CommandLookup::CommandLookup(const CommandCatalogue& catalogue) : catalogue_(catalogue) {
    for (int k = 1; k <= catalogue_.Count(); ++k) {
        entries_.push_back(&catalogue_[k]);
        Add(catalogue_[k].Keyword, k);
        if (other_ == 0 && BeginsWith(catalogue_[k].Keyword, "(other)"))
            other_ = k;
    }
}

int CommandLookup::Next(int node, char letter) const {
    for (const auto& [itsLetter, next] : nodes_[static_cast<std::size_t>(node)].next)
        if (itsLetter == letter)
            return next;
    return 0;
}

void CommandLookup::Add(std::string_view keyword, int entry) {
    int node = 0;
    for (const char c : keyword) {
        const char letter = Lower(c);
        int next = Next(node, letter);
        if (next == 0) {
            next = static_cast<int>(nodes_.size());
            nodes_.emplace_back();
            nodes_[static_cast<std::size_t>(node)].next.emplace_back(letter, next);
        }
        node = next;
    }
    int& itsEntry = nodes_[static_cast<std::size_t>(node)].entry;
    if (itsEntry == 0)
        itsEntry = entry;
}

const CommandDefinition* CommandLookup::Find(std::string_view line) const {
    int found = nodes_.front().entry; // an empty keyword matches every line
    int node = 0;
    for (const char c : TrimLeft(line)) {
        node = Next(node, Lower(c));
        if (node == 0)
            break;
        const int entry = nodes_[static_cast<std::size_t>(node)].entry;
        if (entry != 0 && (found == 0 || entry < found))
            found = entry;
    }
    return entries_[static_cast<std::size_t>(found)];
}

const CommandDefinition* CommandLookup::FindKeyword(std::string_view keyword) const {
    int node = 0;
    for (const char c : keyword) {
        node = Next(node, Lower(c));
        if (node == 0)
            return nullptr;
    }
    return entries_[static_cast<std::size_t>(nodes_[static_cast<std::size_t>(node)].entry)];
}

} // namespace zem
