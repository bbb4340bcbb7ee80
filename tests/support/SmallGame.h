#pragma once

#include "support/RunningProgram.h"

#include <string>

namespace zem::test {

/// A game of two rooms.
inline const std::string Small =
    CrLf("define game <Tower>\nstart <Hall>\nend define\ndefine room <Hall>\nend define\n"
         "define room <Attic>\nend define\n");

inline void DeleteRoom(RunningProgram& p, int row) {
    p.Select("lstRooms", row);
    p.Click("butDeleteRoom");
}

/// The captions of the undo and the redo command; "-" for one that is off.
inline std::string UndoText(const RunningProgram& p) {
    const auto text = [&p](const char* action) {
        const auto* item = p.Find<QAction>(action);
        return item->isEnabled() ? item->text().toStdString() : std::string("-");
    };
    return text("mnuToolsUndo") + ", " + text("mnuToolsRedo");
}

} // namespace zem::test
