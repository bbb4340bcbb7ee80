#include "map/DockMatching.h"

#include "map/Drawing.h"
#include "map/FreeCells.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace zem::map {

namespace {

constexpr int Nobody = -1;
constexpr int MostTries =
    200; // rooms that change places for one more; a host with thousands has no use for more

class Matcher {
public:
    Matcher(const Group& group, int base, std::vector<Cell>& cells)
        : group_(group),
          cells_(cells),
          hostOf_(group.Size(), Nobody),
          levelOf_(group.Size(), 0) {
        FindLevels(base);
        Group first;
        for (const Term& term : group.terms)
            if (term.direction != Anywhere)
                first.terms.push_back(term);
        first.rooms.assign(group.rooms.begin(), group.rooms.begin() + base);
        first.pins.assign(group.pins.begin(), group.pins.begin() + base);
        cells.resize(base);
        grid_ = Drawing(first, cells).Spots();
        cells.resize(group.Size());
    }

    void Match() {
        FreeCells free(grid_);
        for (const std::vector<int>& level : levels_) {
            MatchLevel(level);
            for (const int room : level)
                if (cellOf_[room] == Nobody) {
                    cells_[room] = free.Nearest(cells_[hostOf_[room]]);
                    grid_.At(cells_[room]).room = room;
                }
        }
    }

private:
    void FindLevels(int base) {
        for (const Term& term : group_.terms)
            if (term.direction == Anywhere)
                hostOf_[term.b] = term.a;
        for (int room = base; room < group_.Size(); ++room) {
            levelOf_[room] = levelOf_[hostOf_[room]] + 1;
            if (levelOf_[room] > static_cast<int>(levels_.size()))
                levels_.emplace_back();
            levels_[levelOf_[room] - 1].push_back(room);
        }
    }

    bool IsOpen(Cell cell) const {
        const Grid::Spot* spot = grid_.Find(cell);
        return spot == nullptr || (spot->room == NoRoom && LinesOver(*spot) == 0);
    }

    void MatchLevel(std::vector<int> level) {
        cellOf_.assign(group_.Size(), Nobody);
        choices_.assign(group_.Size(), {});
        spots_.clear();
        holder_.clear();
        std::map<Cell, int> known;
        for (const int room : level)
            for (const Cell cell : CellsNear(cells_[hostOf_[room]]))
                if (IsOpen(cell)) {
                    const auto [spot, isNew] = known.emplace(cell, static_cast<int>(spots_.size()));
                    if (isNew)
                        spots_.push_back(cell);
                    choices_[room].push_back(spot->second);
                }
        holder_.assign(spots_.size(), Nobody);
        std::stable_sort(level.begin(), level.end(),
                         [this](int a, int b) { return choices_[a].size() < choices_[b].size(); });
        for (const int room : level) {
            tried_.assign(spots_.size() < 64 ? 64 : spots_.size(), 0);
            tries_ = 0;
            FindCell(room);
        }
        for (const int room : level)
            if (cellOf_[room] != Nobody) {
                cells_[room] = spots_[cellOf_[room]];
                grid_.At(cells_[room]).room = room;
            }
    }

    /// An augmenting path: the room takes a free cell, or one whose holder finds another.
    bool FindCell(int room) {
        for (const int spot : choices_[room])
            if (holder_[spot] == Nobody)
                return Take(room, spot);
        for (const int spot : choices_[room]) {
            if (tried_[spot] || ++tries_ > MostTries)
                continue;
            tried_[spot] = 1;
            if (FindCell(holder_[spot]))
                return Take(room, spot);
        }
        return false;
    }

    bool Take(int room, int spot) {
        holder_[spot] = room;
        cellOf_[room] = spot;
        return true;
    }

    const Group& group_;
    std::vector<Cell>& cells_;
    std::vector<int> hostOf_;
    std::vector<int> levelOf_; // 0 for rooms that exits reach
    std::vector<std::vector<int>> levels_;
    Grid grid_;
    std::vector<Cell> spots_;
    std::vector<std::vector<int>> choices_;
    std::vector<int> holder_;
    std::vector<int> cellOf_;
    std::vector<char> tried_;
    int tries_ = 0;
};

} // namespace

std::vector<Cell> CellsNear(Cell host) {
    std::vector<Cell> cells;
    for (int y = -NearHost; y <= NearHost; ++y)
        for (int x = -NearHost; x <= NearHost; ++x)
            if (x != 0 || y != 0)
                cells.push_back({x, y});
    std::stable_sort(cells.begin(), cells.end(),
                     [](Cell a, Cell b) { return a.x * a.x + a.y * a.y < b.x * b.x + b.y * b.y; });
    for (Cell& cell : cells)
        cell = cell + host;
    return cells;
}

void MatchDocks(const Group& group, int base, std::vector<Cell>& cells) {
    Matcher(group, base, cells).Match();
}

} // namespace zem::map
