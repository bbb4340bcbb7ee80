#pragma once

#include "map/Geometry.h"
#include "map/MapGraph.h"

#include <vector>

namespace zem::map {

/// What stands where: at most one room in each cell, and how many straight lines of each slant cross it.
/// Memory is taken in tiles where something stands, so that far-flung maps stay small.
class Grid {
public:
    static constexpr int Slants = DirectionCount / 2;

    /// One cell, and the point between it and its neighbour to the southeast, where diagonals may cross.
    struct Spot {
        int room = NoRoom;
        std::uint16_t lines[Slants] = {0, 0, 0, 0}; // over the cell, by direction % 4
        std::uint16_t between[2] = {0, 0};          // over the point between, northeast and southeast
    };

    /// The room in the cell, or NoRoom.
    int RoomAt(Cell cell) const {
        const Spot* spot = Find(cell);
        return spot == nullptr ? NoRoom : spot->room;
    }

    /// What stands at the cell; nullptr when nothing ever did.
    const Spot* Find(Cell cell) const {
        const int x = (cell.x >> TileBits) - left_;
        const int y = (cell.y >> TileBits) - top_;
        if (x < 0 || y < 0 || x >= width_ || y >= height_)
            return nullptr;
        const int tile = tiles_[static_cast<std::size_t>(y) * width_ + x];
        return tile < 0 ? nullptr : &spots_[static_cast<std::size_t>(tile) * TileSize + Inside(cell)];
    }

    /// The same for writing. The reference is good until the next call.
    Spot& At(Cell cell);

private:
    static constexpr int TileBits = 4;
    static constexpr int TileSide = 1 << TileBits;
    static constexpr std::size_t TileSize = TileSide * TileSide;

    static std::size_t Inside(Cell cell) {
        return static_cast<std::size_t>((cell.y & (TileSide - 1)) * TileSide + (cell.x & (TileSide - 1)));
    }
    void Include(int x, int y);

    int left_ = 0; // of the tiles
    int top_ = 0;
    int width_ = 0;
    int height_ = 0;
    std::vector<int> tiles_; // row by row, -1 for one that is not there
    std::vector<Spot> spots_;
};

/// How many straight lines run over the cell.
inline int LinesOver(const Grid::Spot& spot) {
    return spot.lines[0] + spot.lines[1] + spot.lines[2] + spot.lines[3];
}

} // namespace zem::map
