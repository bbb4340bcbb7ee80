#pragma once

#include "base/LineText.h"
#include "model/GameModel.h"

#include <span>
#include <string>
#include <string_view>

namespace zem {

/// One keyword of a block: lines that begin with the word are read into the record.
template <class Record>
struct Keyword {
    std::string_view word; // small letters, with the blank that must follow
    void (*read)(Record& record, std::string_view line, std::string_view word);
};

/// Reads a trimmed line into the record by the first row whose keyword it begins with; false when there is
/// none. The order of the rows is the order of the tests.
template <class Record>
bool ReadByKeyword(std::span<const Keyword<Record>> rows, Record& record, std::string_view line) {
    for (const Keyword<Record>& row : rows)
        if (BeginsWith(line, row.word)) {
            row.read(record, line, row.word);
            return true;
        }
    return false;
}

/// What a row of a keyword table does with its line: the usual ways.
namespace reads {

/// The text in the brackets goes to the field.
template <auto Field>
inline constexpr auto Parameter =
    [](auto& record, std::string_view line, std::string_view) { record.*Field = GetParameter(line); };

/// The text after the keyword goes to the field as it is.
template <auto Field>
inline constexpr auto Rest =
    [](auto& record, std::string_view line, std::string_view word) { record.*Field = TextAfter(line, word); };

/// The text after the keyword goes to the field, trimmed.
template <auto Field>
inline constexpr auto TrimmedRest = [](auto& record, std::string_view line, std::string_view word) {
    record.*Field = Trim(TextAfter(line, word));
};

/// The text in the brackets and the script after them are appended to the table.
template <auto List>
inline constexpr auto AppendPair = [](auto& record, std::string_view line, std::string_view) {
    const std::string_view key = GetParameter(line);
    (record.*List).Append({std::string(key), std::string(TextAfterParameter(line))});
};

/// The line says nothing here.
inline constexpr auto Nothing = [](auto&, std::string_view, std::string_view) {};

} // namespace reads

/// Adds a line that nobody understands to a block's miscellaneous tags; empty lines are dropped.
inline void KeepLine(std::string& miscTags, std::string_view line) {
    if (!line.empty())
        miscTags.append(line).append("\r\n");
}

} // namespace zem
