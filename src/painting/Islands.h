#pragma once

#include "routing/RoutedMap.h"

#include <QLineF>
#include <QVector>

namespace zem {

/// Islands are rooms that exits join to each other and to no other room, with those that dock at them. Gives
/// the outline of each but the largest, which needs none; of a room by itself there is none, either.
QVector<QLineF> IslandOutlines(const routing::RoutedMap& map);

} // namespace zem
