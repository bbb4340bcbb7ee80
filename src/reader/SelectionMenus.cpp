#include "base/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

namespace zem {

namespace {

constexpr Keyword<SelectionMenu> MenuRows[] = {
    {"choice ", reads::AppendPair<&SelectionMenu::Choices>},
    {"info ", reads::Parameter<&SelectionMenu::Info>},
};

} // namespace

void ReadSelectionMenus(GameModel& game, const SourceText& source) {
    source.UseBlocks(MenuKind, [&](const BlockSpan& block) {
        source.UseLine(block.FirstLine, [&](std::string_view firstLine) {
            SelectionMenu& menu = game.SelectionMenus.Append();
            menu.Name = GetParameter(firstLine);
            source.UseInnerLines(block, [&](std::string_view line) {
                ReadByKeyword<SelectionMenu>(MenuRows, menu, line); // any other line is dropped
            });
        });
    });
}

} // namespace zem
