#include "kel/CommandLookup.h"

#include "base/LineText.h"

#include <algorithm>

namespace zem {

CommandLookup::CommandLookup(const CommandCatalogue& catalogue) : catalogue_(catalogue) {
    for (const CommandDefinition& definition : catalogue_) {
        entries_.push_back({&definition, Lower(definition.Keyword), ReadSyntax(definition.RawSyntax)});
        if (other_ == nullptr && BeginsWith(definition.Keyword, "(other)"))
            other_ = &definition;
    }
}

const CommandDefinition* CommandLookup::Find(std::string_view line) const {
    const std::string_view trimmed = TrimLeft(line);
    for (const CommandEntry& entry : entries_)
        if (BeginsWith(trimmed, entry.keyword))
            return entry.definition;
    return nullptr;
}

const CommandEntry* CommandLookup::FindKeyword(std::string_view keyword) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const CommandEntry& entry) {
        return EqualIgnoringCase(keyword, entry.keyword);
    });
    return found == entries_.end() ? nullptr : &*found;
}

} // namespace zem
