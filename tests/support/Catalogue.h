#pragma once

#include "kel/CommandCatalogue.h"

namespace zem::test {

/// The commands that Zem ships with.
inline CommandCatalogue ShippedCatalogue() {
    CommandCatalogue catalogue;
    LoadCommandCatalogue(catalogue, ZEM_PROGRAM_FOLDER "/zem.dat");
    return catalogue;
}

} // namespace zem::test
