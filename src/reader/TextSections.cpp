#include "base/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

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
        const RecordNotes notes{source, Place::Of({{FieldId::GameTextSections, game.TextSections.Count()}})};
        notes.Record(block.FirstLine);
        source.UseInnerLines(block, [&](std::string_view line, std::size_t index) {
            text.append(line).append("\r\n");
            notes.Field(FieldId::TextText, index);
        });
        if (!text.empty())
            text.resize(text.size() - 2);
    });
    AddStandardTexts(game);
}

} // namespace zem
