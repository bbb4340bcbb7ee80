#pragma once

#include "routing/RoutedMap.h"

class QPagedPaintDevice;

namespace zem {

/// Prints the map: on one page, turned the way that suits it, or on as many as it takes for names to be read.
/// Throws KelError when the printer does not take it.
void PrintMap(QPagedPaintDevice& printer, const routing::RoutedMap& map);

} // namespace zem
