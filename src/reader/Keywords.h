#pragma once

#include "base/LineText.h"
#include "model/Place.h"
#include "reader/SourceText.h"

#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace zem {

/// One keyword of a block: lines that begin with the word are read into the record.
template <class Record>
struct Keyword {
    std::string_view word; // small letters, with the blank that must follow
    FieldId field;         // what the line is read into; None for none
    void (*read)(Record& record, std::string_view line, std::string_view word);
};

/// The notes of the lines from which one record is read, for who asked.
struct RecordNotes {
    const SourceText& source;
    Place record; // Without a field.

    void Record(std::size_t index) const { source.Note(record, index); }

    void Field(FieldId field, std::size_t index) const {
        if (source.NotedLines() == nullptr)
            return; // before a place is made for nobody
        Place place = record;
        place.field = field;
        source.Note(place, index);
    }

    Place Entry(FieldId list, int entry) const {
        Place place = record;
        place.steps[record.Depth()] = {list, entry};
        return place;
    }

    /// Notes a field that may also be a list, whose last entry was read, or a record of its own.
    template <class Read>
    void FieldOf(const Read& read, FieldId id, std::size_t index) const {
        ForEachField<Read>([&](const auto& field) {
            if (field.id != id)
                return;
            using Value = std::remove_cvref_t<decltype(read.*field.member)>;
            if constexpr (RecordList<Value>)
                source.Note(Entry(id, (read.*field.member).Count()), index);
            else if constexpr (std::is_same_v<Value, Shared<ScriptPair>>)
                source.Note(Entry(id, 0), index);
            else
                Field(id, index);
        });
    }
};

/// Reads a trimmed line into the record by the first row whose keyword it begins with; false when there is
/// none. The order of the rows is the order of the tests.
template <class Record>
bool ReadByKeyword(std::span<const Keyword<Record>> rows, Record& record, std::string_view line,
                   const RecordNotes& notes, std::size_t index) {
    for (const Keyword<Record>& row : rows)
        if (BeginsWith(line, row.word)) {
            row.read(record, line, row.word);
            if (notes.source.NotedLines() != nullptr && row.field != FieldId::None)
                notes.FieldOf(record, row.field, index);
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
/// @return  whether it was added
inline bool KeepLine(std::string& miscTags, std::string_view line) {
    if (!line.empty())
        miscTags.append(line).append("\r\n");
    return !line.empty();
}

} // namespace zem
