#include "model/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

#include <algorithm>

namespace zem {

namespace {

bool IsKnown(std::string_view firstLine) {
    constexpr std::string_view Known[] = {"define game ", "define room ", "define text ", "define selection ",
                                          "define procedure "};
    // Exactly, although the synonyms themselves are read in any capitals: such a block is kept here, too.
    return firstLine == "define synonyms" ||
           std::any_of(std::begin(Known), std::end(Known),
                       [&](std::string_view keyword) { return BeginsWith(firstLine, keyword); });
}

} // namespace

void CollectUnknownBlocks(GameModel& game, const SourceText& source) {
    for (const BlockSpan& block : source.Blocks()) {
        if (IsKnown(source.Line(block.FirstLine)))
            continue;
        for (std::size_t index = block.FirstLine; index <= block.LastLine; ++index)
            KeepLine(game.UnknownBlocks.Edit(), source.Line(index));
        game.UnknownBlocks.Edit().append("\r\n");
    }
}

} // namespace zem
