#include "game/PlaceLine.h"

#include "base/LineText.h"

#include <algorithm>

namespace zem {

namespace {

constexpr std::string_view Cut = "...";

} // namespace

LineInContext InContext(std::string_view text, TextRange bytes, std::size_t most) {
    const std::size_t before = text.substr(0, bytes.begin).rfind('\n');
    TextRange line = {before == std::string_view::npos ? 0 : before + 1,
                      std::min(text.find('\n', bytes.begin), text.size())};
    if (line.end > line.begin && text[line.end - 1] == '\r')
        --line.end;
    line = TrimmedRange(text, line);
    const TextRange marked = {std::clamp(bytes.begin, line.begin, line.end),
                              std::clamp(bytes.end, line.begin, line.end)};
    TextRange shown = line;
    if (line.Size() > most) { // a third of what is left stands before the bytes
        const std::size_t around = most - std::min(most, marked.Size());
        shown.begin = marked.begin - std::min(marked.begin - line.begin, around / 3);
        shown.end = std::min(line.end, shown.begin + std::max(most, marked.Size()));
        shown.begin = std::min(shown.begin, std::max(line.begin, shown.end - std::min(shown.end, most)));
    }
    LineInContext context;
    if (shown.begin > line.begin)
        context.text = Cut;
    const std::size_t shift = context.text.size();
    context.text += shown.Of(text);
    std::replace(context.text.begin(), context.text.end(), '\t', ' ');
    context.marked = {marked.begin - shown.begin + shift,
                      std::min(marked.end, shown.end) - shown.begin + shift};
    if (shown.end < line.end)
        context.text += Cut;
    return context;
}

PlaceGroup GroupOf(const ScriptOwners& owners, const Place& place) {
    const PlaceStep step = owners.Path(place).front().steps.front();
    return {step.list, step.list == FieldId::GameRooms ? step.entry : 0};
}

std::string GroupTitle(const GameModel& game, const PlaceGroup& group) {
    switch (group.list) {
    case FieldId::GameRooms: {
        const bool isThere = group.room >= 1 && group.room <= game.Rooms.Count();
        const std::string_view name = isThere ? Trim(game.Rooms[group.room].Name) : std::string_view();
        return name.empty() ? "Room number " + std::to_string(group.room) : std::string(name);
    }
    case FieldId::GameIncludes:
        return "Libraries";
    case FieldId::GameTextSections:
        return "Text blocks";
    case FieldId::GameItems:
        return "Items";
    case FieldId::GameCollectables:
        return "Collectables";
    case FieldId::GameProcedures:
        return "Procedures";
    case FieldId::GameSelectionMenus:
        return "Menus";
    case FieldId::GameSynonyms:
        return "Synonyms";
    case FieldId::GamePlayerCommands:
        return "Player commands";
    case FieldId::GameUses:
        return "Use-able objects";
    case FieldId::GameErrorMessages:
        return "Error messages";
    default:
        return "Game properties";
    }
}

} // namespace zem
