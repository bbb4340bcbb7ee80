#include "base/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

namespace zem {

namespace {

constexpr Keyword<SelectionMenu> MenuKeywords[] = {
    {"choice ", FieldId::MenuChoices, reads::AppendPair<&SelectionMenu::Choices>},
    {"info ", FieldId::MenuInfo, reads::Parameter<&SelectionMenu::Info>},
};

} // namespace

void ReadSelectionMenus(GameModel& game, const SourceText& source) {
    source.UseBlocks(MenuKind, [&](const BlockSpan& block) {
        source.UseLine(block.FirstLine, [&](std::string_view firstLine) {
            SelectionMenu& menu = game.SelectionMenus.Append();
            menu.Name = GetParameter(firstLine);
            const RecordNotes notes{source,
                                    Place::Of({{FieldId::GameSelectionMenus, game.SelectionMenus.Count()}})};
            notes.Record(block.FirstLine);
            source.UseInnerLines(block, [&](std::string_view line, std::size_t index) {
                ReadByKeyword<SelectionMenu>(MenuKeywords, menu, line, notes,
                                             index); // any other line is dropped
            });
        });
    });
}

} // namespace zem
