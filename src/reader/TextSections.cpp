#include "base/LineText.h"
#include "reader/BlockReaders.h"

#include <string>

namespace zem {

void ReadTextSections(GameModel& game, const SourceText& source) {
    game.TextSections.Clear();
    source.UseBlocks(TextKind, [&](const BlockSpan& block) {
        source.UseLine(block.FirstLine, [&](std::string_view line) {
            TextSection& section = game.TextSections.Append();
            section.Name = GetParameter(line);
        });
        std::string& text = game.TextSections.Edit(game.TextSections.Count()).Text;
        source.UseInnerLines(block, [&](std::string_view line) { text.append(line).append("\r\n"); });
        if (!text.empty())
            text.resize(text.size() - 2);
    });
    AddStandardTexts(game);
}

} // namespace zem
