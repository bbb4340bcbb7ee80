#pragma once

#include "model/Fields.h"
#include "model/GameModel.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace zem::test {

/// Takes the text before the next separator off the front, and the separator with it.
inline std::string_view TakeBefore(std::string_view& text, std::string_view separator) {
    const std::size_t end = text.find(separator);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + separator.size());
    return taken;
}

inline void SetField(std::string& field, std::string_view /*path*/, std::string_view text) {
    field = text;
}

template <class Record>
void SetField(Record& record, std::string_view path, std::string_view text);

template <class Record>
void SetField(Shared<Record>& record, std::string_view path, std::string_view text) {
    SetField(record.Edit(), path, text);
}

/// Sets a field of a record by its path, like "room 2, exit out, name". Lists grow as far as it takes.
template <class Record>
void SetField(Record& record, std::string_view path, std::string_view text) {
    const std::string_view step = TakeBefore(path, ", ");
    bool isSet = false;
    ForEachField<Record>([&](const auto& field) {
        auto& value = record.*field.member;
        if constexpr (requires { value.Count(); }) {
            if (!step.starts_with(std::string(field.name) + ' '))
                return;
            const int entry = std::stoi(std::string(step.substr(std::string_view(field.name).size())));
            while (value.Count() < entry)
                value.Append();
            SetField(value.Edit(entry), path, text);
        } else {
            if (step != field.name)
                return;
            SetField(value, path, text);
        }
        isSet = true;
    });
    if (!isSet)
        throw std::runtime_error("no field of text: " + std::string(step));
}

/// Sets fields of a game: "PATH = TEXT && PATH = TEXT".
inline void SetFields(GameModel& game, std::string_view fields) {
    while (!fields.empty()) {
        std::string_view text = TakeBefore(fields, " && ");
        const std::string_view path = TakeBefore(text, " = ");
        SetField(game, path, text);
    }
}

} // namespace zem::test
