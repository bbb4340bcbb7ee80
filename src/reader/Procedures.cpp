#include "base/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

namespace zem {

void ReadProcedures(GameModel& game, const SourceText& source) {
    game.Procedures.Clear();
    source.UseBlocks(ProcedureKind, [&](const BlockSpan& block) {
        source.UseLine(block.FirstLine, [&](std::string_view firstLine) {
            Procedure& procedure = game.Procedures.Append();
            procedure.Name = GetParameter(firstLine);
            const RecordNotes notes{source, Place::Of({{FieldId::GameProcedures, game.Procedures.Count()}})};
            notes.Record(block.FirstLine);
            source.UseInnerLines(block, [&](std::string_view line, std::size_t index) {
                if (KeepLine(procedure.Script, line))
                    notes.Field(FieldId::ProcedureScript, index);
            });
        });
    });
}

} // namespace zem
