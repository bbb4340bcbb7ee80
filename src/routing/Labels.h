#pragma once

#include "routing/Boxes.h"
#include "routing/LineIndex.h"

namespace zem::routing {

/// Finds a place for the name of each stub's destination: beside its end, over no box and no other name, and
/// over no line where that can be had. A name for which there is none is left out.
std::vector<StubLabel> PlaceLabels(const map::MapGraph& graph, const Boxes& boxes, const LineIndex& lines,
                                   const std::vector<MapLine>& stubs);

} // namespace zem::routing
