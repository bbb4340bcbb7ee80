#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Input kept in few bytes: entries of fields, one behind the other.
namespace zem::play {

/// Adds an entry.
void PackEntry(std::string& log, const std::vector<std::string>& fields);

/// Takes the first entry off the front. The log is one that PackEntry made.
std::vector<std::string> TakeEntry(std::string_view& log);

} // namespace zem::play
