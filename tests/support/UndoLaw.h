#pragma once

#include "readback/ReadBack.h"
#include "support/Lines.h"
#include "support/RunningProgram.h"

#include <string>

namespace zem::test {

/// Expects that what has just been done is one step: Undo gives the file of before it, and Redo that of after
/// it.
/// @param before  the game file before the step
inline void ExpectOneStep(const RunningProgram& p, const std::string& before) {
    const std::string after = GameFile(p.game);
    EXPECT_NE(LineChanges(before, after), "") << "nothing was done";
    EXPECT_TRUE(p.game.Modified);
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(LineChanges(before, GameFile(p.game)), "") << "after Undo";
    p.Trigger("mnuToolsRedo");
    EXPECT_EQ(LineChanges(after, GameFile(p.game)), "") << "after Redo";
}

} // namespace zem::test
