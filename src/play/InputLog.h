#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Input kept in few bytes: entries of fields, one behind the other.
namespace zem::play {

/// The first letter of the first field of a log entry.
inline constexpr char BeginEntry = 'B';
inline constexpr char LineEntry = 'L';
inline constexpr char RestartLineEntry = 'P'; // a line that began the game again, which is no turn
inline constexpr char ChoiceEntry = 'C';
inline constexpr char SecondsEntry = 'S';
inline constexpr char RestartEntry = 'R';
inline constexpr char RestoreEntry = 'V';
inline constexpr char HandEntry = 'H';

/// Adds an entry.
void PackEntry(std::string& log, const std::vector<std::string>& fields);

/// Takes the first entry off the front. The log is one that PackEntry made.
std::vector<std::string> TakeEntry(std::string_view& log);

} // namespace zem::play
