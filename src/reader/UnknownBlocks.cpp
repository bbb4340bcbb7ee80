#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

namespace zem {

void CollectUnknownBlocks(GameModel& game, const SourceText& source) {
    source.UseBlocks(KeptKind, [&](const BlockSpan& block) {
        for (std::size_t index = block.FirstLine; index <= block.LastLine; ++index)
            KeepLine(game.UnknownBlocks.Edit(), source.Line(index));
        game.UnknownBlocks.Edit().append("\r\n");
    });
}

} // namespace zem
