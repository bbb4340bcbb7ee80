#include "model/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

namespace zem {

namespace {

constexpr Keyword<SelectionMenu> MenuKeywords[] = {
    {"choice ", reads::AppendPair<&SelectionMenu::Choices>},
    {"info ", reads::Parameter<&SelectionMenu::Info>},
};

} // namespace

void ReadSelectionMenus(GameModel& game, const SourceText& source) {
    for (const BlockSpan& block : source.Blocks()) {
        if (!BeginsWith(source.Line(block.FirstLine), "define selection "))
            continue;
        source.UseLine(block.FirstLine, [&](std::string_view firstLine) {
            SelectionMenu& menu = game.SelectionMenus.Append();
            menu.Name = GetParameter(firstLine);
            source.UseInnerLines(block, [&](std::string_view line) {
                ReadByKeyword<SelectionMenu>(MenuKeywords, menu, line); // any other line is dropped
            });
        });
    }
}

} // namespace zem
