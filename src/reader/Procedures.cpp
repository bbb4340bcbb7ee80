#include "model/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

namespace zem {

void ReadProcedures(GameModel& game, const SourceText& source) {
    game.Procedures.Clear();
    for (const BlockSpan& block : source.Blocks()) {
        if (!block.Is(ProcedureKind))
            continue;
        source.UseLine(block.FirstLine, [&](std::string_view firstLine) {
            Procedure& procedure = game.Procedures.Append();
            procedure.Name = GetParameter(firstLine);
            source.UseInnerLines(block, [&](std::string_view line) { KeepLine(procedure.Script, line); });
        });
    }
}

} // namespace zem
