#include "problems/Fixes.h"

#include "base/LineText.h"
#include "model/InternalScripts.h"
#include "model/Texts.h"

#include <type_traits>
#include <utility>

namespace zem::problems {

namespace {

/// Whether the field of a script holds several lines; in all others a second line would be another statement.
bool MayHoldLines(const Place& place) {
    return place.field == FieldId::ProcedureScript;
}

/// The text at the place, with other bytes in the place of its bytes; no change where they are not those that
/// are expected.
GameModel WithBytes(const GameModel& game, const Place& place, TextRange bytes, std::string_view expected,
                    const std::string& replacement) {
    const auto resolved = Resolve(game, place.WholeField());
    if (!resolved || bytes.end > (resolved->text == nullptr ? 0 : resolved->text->size()))
        return game;
    const std::string none;
    std::string text = resolved->text == nullptr ? none : *resolved->text;
    if (bytes.Of(text) != expected)
        return game;
    text.replace(bytes.begin, bytes.Size(), replacement);
    GameModel changed = game;
    SetText(changed, place, std::move(text));
    return changed;
}

/// Removes the entry that the step at `depth`, the last one, leads to.
template <class Record>
void Remove(Record& record, const Place& place, std::size_t depth, std::size_t last) {
    if constexpr (!std::is_same_v<Record, std::string>) {
        const PlaceStep step = place.steps[depth];
        ForEachField<Record>([&](const auto& field) {
            if (field.id != step.list)
                return;
            auto& value = record.*field.member;
            using Value = std::remove_cvref_t<decltype(value)>;
            if constexpr (RecordList<Value>) {
                if (step.entry < 1 || step.entry > value.Count())
                    return;
                if (depth == last)
                    value.Remove(static_cast<std::int16_t>(step.entry));
                else
                    Remove(value.Edit(static_cast<std::int16_t>(step.entry)), place, depth + 1, last);
            } else if constexpr (std::is_same_v<Value, Shared<ScriptPair>>) {
                value = ScriptPair();
            }
        });
    }
}

} // namespace

Fix ReplaceBytes(std::string button, const Place& place, std::string_view expected, std::string replacement) {
    return {std::move(button), [place, expected = std::string(expected),
                                replacement = std::move(replacement)](const GameModel& game) {
                return WithBytes(game, place, place.bytes, expected, replacement);
            }};
}

Fix SetField(std::string button, const Place& field, std::string_view expected, std::string text) {
    return {std::move(button),
            [field, expected = std::string(expected), text = std::move(text)](const GameModel& game) {
                return WithBytes(game, field, {0, expected.size()}, expected, text);
            }};
}

Fix ReplaceLine(std::string button, const Place& line, std::string_view expected, std::string lines) {
    if (MayHoldLines(line) || lines.find("\r\n") == std::string::npos)
        return ReplaceBytes(std::move(button), line, expected, std::move(lines));
    return ReplaceWithProcedure(std::move(button), line, expected, std::move(lines));
}

Fix ReplaceWithProcedure(std::string button, const Place& command, std::string_view expected,
                         std::string lines) {
    return {std::move(button),
            [command, expected = std::string(expected), lines = std::move(lines)](const GameModel& game) {
                GameModel changed = game;
                const std::string name = AddInternalProcedure(changed, lines);
                GameModel called = WithBytes(changed, command, command.bytes, expected, "do <" + name + ">");
                return SameGame(called, changed) ? game : called;
            }};
}

Fix RemoveLine(std::string button, const Place& line, std::string_view expected) {
    return {std::move(button), [line, expected = std::string(expected)](const GameModel& game) {
                const auto resolved = Resolve(game, line.WholeField());
                if (!resolved || resolved->text == nullptr || line.bytes.end > resolved->text->size() ||
                    line.bytes.Of(*resolved->text) != expected)
                    return game;
                const std::string& text = *resolved->text;
                TextRange whole = line.bytes;
                while (whole.begin > 0 && text[whole.begin - 1] == ' ')
                    --whole.begin;
                while (whole.end < text.size() && text[whole.end] == ' ')
                    ++whole.end;
                if (text.compare(whole.end, 2, "\r\n") == 0)
                    whole.end += 2;
                else if (whole.begin >= 2 && text.compare(whole.begin - 2, 2, "\r\n") == 0)
                    whole.begin -= 2;
                return WithBytes(game, line, whole, whole.Of(text), "");
            }};
}

Fix RemoveRecord(std::string button, const Place& record) {
    return ChangeGame(std::move(button), [record](GameModel& game) {
        const std::size_t depth = record.Depth();
        if (depth > 0 && Exists(game, record.WholeField()))
            Remove(game, record, 0, depth - 1);
    });
}

Fix ChangeGame(std::string button, std::function<void(GameModel&)> change) {
    return {std::move(button), [change = std::move(change)](const GameModel& game) {
                GameModel changed = game;
                change(changed);
                return changed;
            }};
}

std::string ChangeTo(std::string_view name) {
    return "Change to " + std::string(name);
}

} // namespace zem::problems
