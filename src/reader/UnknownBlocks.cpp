#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

namespace zem {

void CollectUnknownBlocks(GameModel& game, const SourceText& source) {
    source.UseBlocks(KeptKind, [&](const BlockSpan& block) {
        for (std::size_t index = block.FirstLine; index <= block.LastLine; ++index)
            if (KeepLine(game.UnknownBlocks.Edit(), source.Line(index)))
                source.Note(Place::Of({}, FieldId::GameUnknownBlocks), index);
        game.UnknownBlocks.Edit().append("\r\n");
        source.Note(Place::Of({}, FieldId::GameUnknownBlocks), block.LastLine); // of the empty line
    });
}

} // namespace zem
