#include "map/Grid.h"

#include <utility>

namespace zem::map {

Grid::Spot& Grid::At(Cell cell) {
    const int x = cell.x >> TileBits;
    const int y = cell.y >> TileBits;
    if (x < left_ || y < top_ || x >= left_ + width_ || y >= top_ + height_)
        Include(x, y);
    int& tile = tiles_[static_cast<std::size_t>(y - top_) * width_ + (x - left_)];
    if (tile < 0) {
        tile = static_cast<int>(spots_.size() / TileSize);
        spots_.resize(spots_.size() + TileSize);
    }
    return spots_[static_cast<std::size_t>(tile) * TileSize + Inside(cell)];
}

/// Makes the table of tiles so large that this one has a place in it, and some more on that side.
void Grid::Include(int x, int y) {
    const int spareX = 2 + width_ / 2;
    const int spareY = 2 + height_ / 2;
    const int left = width_ == 0 ? x - 2 : x < left_ ? x - spareX : left_;
    const int top = height_ == 0 ? y - 2 : y < top_ ? y - spareY : top_;
    const int right = width_ == 0 ? x + 3 : x >= left_ + width_ ? x + spareX : left_ + width_;
    const int bottom = height_ == 0 ? y + 3 : y >= top_ + height_ ? y + spareY : top_ + height_;
    std::vector<int> tiles(static_cast<std::size_t>(right - left) * (bottom - top), -1);
    for (int row = 0; row < height_; ++row)
        for (int column = 0; column < width_; ++column)
            tiles[static_cast<std::size_t>(row + top_ - top) * (right - left) + (column + left_ - left)] =
                tiles_[static_cast<std::size_t>(row) * width_ + column];
    tiles_ = std::move(tiles);
    left_ = left;
    top_ = top;
    width_ = right - left;
    height_ = bottom - top;
}

} // namespace zem::map
