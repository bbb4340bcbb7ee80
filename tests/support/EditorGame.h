#pragma once

#include "support/Games.h"

namespace zem::test {

/// A game in which nearly every field of every form is filled, some with bytes that boxes like to change: a
/// no-break blank (A0), a byte without a character of its own (81), a lone CR. Saving it as "game.kel" gives
/// it back.
inline std::string EditorGame() {
    return ReadBytes(ZEM_TEST_DATA "/every-field.kel");
}

} // namespace zem::test
