#include "base/LineText.h"
#include "reader/BlockReaders.h"

namespace zem {

void ReadSynonyms(GameModel& game, const SourceText& source) {
    game.Synonyms.Clear();
    source.UseBlocks(SynonymsKind, [&](const BlockSpan& block) {
        source.UseInnerLines(block, [&](std::string_view line, std::size_t index) {
            const std::size_t equals = line.find('=');
            if (equals == std::string_view::npos)
                throw KelError(line.empty() ? "an empty line among the synonyms: each line needs a \"=\""
                                            : "a synonym without \"=\"");
            game.Synonyms.Append(
                {std::string(Trim(line.substr(0, equals))), std::string(Trim(line.substr(equals + 1)))});
            source.NoteLastOf(FieldId::GameSynonyms, game.Synonyms, index);
        });
    });
}

} // namespace zem
