#include "map/Packing.h"

#include "map/Drawing.h"

#include <queue>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace zem::map {

namespace {

constexpr int MostTies = 4;
constexpr int MoreRings = 4;   // beyond the nearest place, for one that makes the map less large
constexpr int PriceOfRing = 2; // of the way to the tie, in cells of the map
constexpr int MostRings = 120; // around a tie; what finds no place there goes to the shelf

/// A tie from a room of a block that stands to one of a block that waits.
struct Link {
    Cell near; // on the map
    Cell own;  // in its own block
};

class Packer {
public:
    Packer(const MapGraph& graph, const std::vector<Block>& blocks)
        : graph_(graph),
          blocks_(blocks),
          blockOf_(graph.RoomCount(), NoRoom),
          own_(graph.RoomCount()),
          cells_(graph.RoomCount()),
          tiesOf_(graph.RoomCount()),
          placed_(blocks.size(), 0),
          queued_(blocks.size(), 0) {
        for (int block = 0; block < static_cast<int>(blocks.size()); ++block)
            for (std::size_t k = 0; k < blocks[block].rooms.size(); ++k) {
                blockOf_[blocks[block].rooms[k]] = block;
                own_[blocks[block].rooms[k]] = blocks[block].cells[k];
            }
        for (int tie = 0; tie < static_cast<int>(graph.ties.size()); ++tie) {
            tiesOf_[graph.ties[tie].from].push_back(tie);
            tiesOf_[graph.ties[tie].to].push_back(tie);
        }
    }

    std::vector<Cell> Pack(const std::vector<int>& lonely) {
        for (const int block : LargestFirst()) {
            if (placed_[block])
                continue;
            PutOnShelf(block);
            while (!waiting_.empty()) {
                const int next = std::get<2>(waiting_.top());
                waiting_.pop();
                PutNearTies(next);
            }
        }
        PutLonely(lonely);
        return std::move(cells_);
    }

private:
    std::vector<int> LargestFirst() const {
        std::vector<int> order(blocks_.size());
        for (int block = 0; block < static_cast<int>(order.size()); ++block)
            order[block] = block;
        std::stable_sort(order.begin(), order.end(), [this](int a, int b) {
            if (blocks_[a].pinned != blocks_[b].pinned)
                return blocks_[a].pinned;
            return blocks_[a].rooms.size() > blocks_[b].rooms.size();
        });
        return order;
    }

    /// Calls for each cell of the block that a room or a straight line takes: visit(cell, isRoom).
    template <class Visit>
    void ForEachCell(const Block& block, Visit visit) const {
        for (const Cell cell : block.cells)
            visit(cell, true);
        for (const Term& term : block.terms) {
            const Cell way = block.cells[term.b] - block.cells[term.a];
            if (term.direction != Anywhere && IsExact(way, term.direction) && Length(way) <= LongestLine)
                ForEachPoint(block.cells[term.a], term.direction, Length(way), [&](Cell cell, bool between) {
                    if (!between)
                        visit(cell, false);
                });
        }
    }

    void Place(int number, Cell shift) {
        const Block& block = blocks_[number];
        placed_[number] = 1;
        ForEachCell(block, [&](Cell cell, bool isRoom) {
            const Cell at = cell + shift;
            ++taken_.At(at).lines[0];
            // The rooms of another block keep a cell's distance.
            for (Direction direction = 0; isRoom && direction < DirectionCount; ++direction)
                ++taken_.At(at + Step(direction)).lines[0];
            Include(at);
        });
        for (std::size_t k = 0; k < block.rooms.size(); ++k) {
            cells_[block.rooms[k]] = block.cells[k] + shift;
            Enqueue(block.rooms[k]);
        }
    }

    void Include(Cell at) {
        left_ = empty_ ? at.x : std::min(left_, at.x);
        right_ = empty_ ? at.x : std::max(right_, at.x);
        top_ = empty_ ? at.y : std::min(top_, at.y);
        bottom_ = empty_ ? at.y : std::max(bottom_, at.y);
        empty_ = false;
    }

    void Enqueue(int room) {
        for (const int tie : tiesOf_[room]) {
            const int other = graph_.ties[tie].from == room ? graph_.ties[tie].to : graph_.ties[tie].from;
            const int block = blockOf_[other];
            if (block == NoRoom || placed_[block] || queued_[block])
                continue;
            queued_[block] = 1;
            waiting_.emplace(static_cast<int>(blocks_[block].rooms.size()), -block, block);
        }
    }

    std::vector<Link> LinksOf(int number) const {
        std::vector<Link> links;
        for (const int room : blocks_[number].rooms)
            for (const int tie : tiesOf_[room]) {
                const int other = graph_.ties[tie].from == room ? graph_.ties[tie].to : graph_.ties[tie].from;
                if (blockOf_[other] != NoRoom && placed_[blockOf_[other]] && links.size() < MostTies)
                    links.push_back({cells_[other], own_[room]});
            }
        return links;
    }

    bool Fits(const std::vector<Cell>& outline, Cell shift) const {
        return std::none_of(outline.begin(), outline.end(), [&](Cell cell) {
            const Grid::Spot* spot = taken_.Find(cell + shift);
            return spot != nullptr && spot->lines[0] > 0;
        });
    }

    void PutNearTies(int number) {
        std::vector<Cell> outline;
        ForEachCell(blocks_[number], [&](Cell cell, bool) { outline.push_back(cell); });
        Scatter(outline);
        const std::vector<Link> links = LinksOf(number);
        const double size = std::sqrt(static_cast<double>(outline.size()));
        int last = std::min(MostRings, tests_ > 2'000'000 ? 3 : 20 + static_cast<int>(4 * size));
        std::int64_t best = -1;
        Cell place;
        for (int radius = 1; radius <= last; ++radius)
            for (const Link& link : links)
                for (int k = 0; k < 8 * radius; ++k) {
                    const Cell shift = link.near + OnRing(radius, k) - link.own;
                    ++tests_;
                    if (!Fits(outline, shift))
                        continue;
                    const std::int64_t price = AreaWith(outline, shift) + std::int64_t{PriceOfRing} * radius;
                    if (best < 0)
                        last = std::min(last, radius + MoreRings);
                    if (best < 0 || price < best) {
                        best = price;
                        place = shift;
                    }
                }
        if (best >= 0) {
            Place(number, place);
            return;
        }
        PutOnShelf(number);
    }

    /// The area of the map when the block stands there, too.
    std::int64_t AreaWith(const std::vector<Cell>& outline, Cell shift) const {
        int left = left_, right = right_, top = top_, bottom = bottom_;
        for (const Cell cell : outline) {
            left = std::min(left, cell.x + shift.x);
            right = std::max(right, cell.x + shift.x);
            top = std::min(top, cell.y + shift.y);
            bottom = std::max(bottom, cell.y + shift.y);
        }
        return std::int64_t{right - left + 1} * (bottom - top + 1);
    }

    /// Cells far from each other first, so that what does not fit is found out soon.
    static void Scatter(std::vector<Cell>& outline) {
        std::uint32_t dice = 1;
        for (std::size_t k = outline.size(); k > 1; --k) {
            dice = dice * 1664525U + 1013904223U;
            std::swap(outline[k - 1], outline[dice % k]);
        }
    }

    static Cell OnRing(int radius, int k) {
        const int side = k / (2 * radius);
        const int at = k % (2 * radius) - radius;
        switch (side) {
        case 0:
            return {at, -radius};
        case 1:
            return {radius, at};
        case 2:
            return {-at, radius};
        default:
            return {-radius, -at};
        }
    }

    /// Rows of blocks below all that stands so far.
    void PutOnShelf(int number) {
        const Block& block = blocks_[number];
        if (block.pinned) {
            Place(number, {0, 0});
            return;
        }
        int left = block.cells.front().x, right = left, top = block.cells.front().y, bottom = top;
        std::vector<Cell> outline;
        ForEachCell(block, [&](Cell cell, bool) {
            outline.push_back(cell);
            left = std::min(left, cell.x);
            right = std::max(right, cell.x);
            top = std::min(top, cell.y);
            bottom = std::max(bottom, cell.y);
        });
        const int width = right - left + 1;
        const int height = bottom - top + 1;
        if (empty_) {
            Place(number, {-left, -top});
            return;
        }
        // What was put near a tie since the shelf began may stand on it.
        const auto hasRoom = [&] {
            return onShelf_ && shelfLeft_ + width <= shelfRight_ && shelfTop_ + height <= shelfBottom_;
        };
        while (hasRoom() && !Fits(outline, Cell{shelfLeft_ - left, shelfTop_ - top}))
            ++shelfLeft_;
        if (!hasRoom())
            BeginShelf(height);
        Place(number, Cell{shelfLeft_ - left, shelfTop_ - top});
        shelfLeft_ += width + 1;
        onShelf_ = true;
    }

    void BeginShelf(int height) {
        const int wide = std::max(right_ - left_ + 1, static_cast<int>(std::sqrt(graph_.RoomCount()) * 2));
        shelfLeft_ = left_;
        shelfRight_ = left_ + wide;
        shelfTop_ = bottom_ + 2;
        shelfBottom_ = shelfTop_ + height;
    }

    void PutLonely(const std::vector<int>& lonely) {
        if (lonely.empty())
            return;
        const int count = static_cast<int>(lonely.size());
        int wide = static_cast<int>(std::ceil(std::sqrt(count * 1.5)));
        if (!empty_)
            wide = std::max(wide, std::min(right_ - left_ + 1, count));
        const Cell corner = empty_ ? Cell{0, 0} : Cell{left_, bottom_ + 2};
        for (int k = 0; k < count; ++k)
            cells_[lonely[k]] = corner + Cell{k % wide, k / wide};
    }

    const MapGraph& graph_;
    const std::vector<Block>& blocks_;
    std::vector<int> blockOf_; // of each room
    std::vector<Cell> own_;    // of each room in its block
    std::vector<Cell> cells_;
    std::vector<std::vector<int>> tiesOf_;
    std::vector<char> placed_;
    std::vector<char> queued_;
    std::priority_queue<std::tuple<int, int, int>> waiting_; // the largest first, then in order
    Grid taken_;                                             // lines[0] counts what forbids a cell
    bool empty_ = true;
    int left_ = 0, right_ = 0, top_ = 0, bottom_ = 0;
    bool onShelf_ = false;
    int shelfLeft_ = 0, shelfRight_ = 0, shelfTop_ = 0, shelfBottom_ = 0;
    std::int64_t tests_ = 0; // beyond some millions a place near the tie is no longer looked for at length
};

} // namespace

std::vector<Cell> Pack(const MapGraph& graph, const std::vector<Block>& blocks,
                       const std::vector<int>& lonely) {
    return Packer(graph, blocks).Pack(lonely);
}

} // namespace zem::map
