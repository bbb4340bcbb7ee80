#pragma once

#include "map/AfterEdit.h"

#include <QString>

#include <optional>

namespace zem {

/// Where the rooms of games stood on their maps, kept for the user between runs of the program: a map opens
/// as it was left. Only good for the very bytes of the file for which it was kept.
class MapCache {
public:
    /// @param folder  private to the user; need not exist yet
    explicit MapCache(QString folder) : folder_(std::move(folder)) {}

    /// The map of the game in this file as it was left; nothing when the file is another one by now.
    std::optional<map::PlacedMap> Find(const QString& gameFile, const map::MapGraph& graph) const;

    /// Keeps the map of a game that is saved as it is. What fails is no loss: it is laid out anew then.
    void Keep(const QString& gameFile, const map::PlacedMap& map) const;

private:
    QString PathFor(const QString& gameFile) const;

    QString folder_;
};

} // namespace zem
