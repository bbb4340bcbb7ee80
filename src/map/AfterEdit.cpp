#include "map/AfterEdit.h"

#include "map/DockMatching.h"
#include "map/FreeCells.h"
#include "map/Hosts.h"
#include "map/KnownRooms.h"
#include "map/Mend.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace zem::map {

namespace {

constexpr int StayPrice = 8;
constexpr int Windows[] = {40, 150, 600};
constexpr int MostNewRooms = 10;  // of a small game
constexpr int MostNewTerms = 200; // more is no edit but another game

using TermKey = std::tuple<int, int, Direction>;

class Editor {
public:
    Editor(const PlacedMap& before, const MapGraph& graph, Effort& effort)
        : graph_(graph),
          effort_(effort),
          known_(KnownRooms(before.graph, graph)) {
        CollectTerms();
        CollectNewTerms(before);
        PlaceRooms(before.cells);
    }

    /// True when so little is known that a new layout serves the author better.
    bool IsAnotherGame() const {
        const auto news = std::count(known_.begin(), known_.end(), NoRoom);
        return news == graph_.RoomCount() || (news > MostNewRooms && news * 3 > graph_.RoomCount()) ||
               newTerms_.size() > MostNewTerms;
    }

    std::vector<Cell> LayOut() {
        Drawing drawing(all_, cells_);
        Shifter shifter(drawing, effort_);
        shifter.SetStayPrice(StayPrice);
        Mender mender(drawing, shifter, effort_);
        for (int room = 0; room < graph_.RoomCount(); ++room)
            if (known_[room] == NoRoom && !graph_.pins[room])
                SettleNewRoom(drawing, room);
        for (const int term : newTerms_)
            for (const int window : Windows)
                if (!drawing.IsTrue(term)) {
                    if (drawing.IsDock(term))
                        SettleNewRoom(drawing, all_.terms[term].b);
                    else
                        mender.Mend(term, window);
                }
        return drawing.Cells();
    }

private:
    /// The whole game is one group here: its blocks stay where they are.
    void CollectTerms() {
        all_.terms = TermsOf(graph_);
        const Hosts hosts = FindHosts(graph_, GroupsOf(graph_, all_.terms));
        for (int room = 0; room < graph_.RoomCount(); ++room)
            all_.rooms.push_back(room);
        for (const int room : hosts.docked)
            all_.terms.push_back({hosts.hostOf[room], room, Anywhere, 1});
        all_.pins = graph_.pins;
    }

    void CollectNewTerms(const PlacedMap& before) {
        std::vector<Term> old = TermsOf(before.graph);
        const Hosts hosts = FindHosts(before.graph, GroupsOf(before.graph, old));
        for (const int room : hosts.docked)
            old.push_back({hosts.hostOf[room], room, Anywhere, 1});
        std::set<TermKey> keys;
        for (const Term& term : old)
            keys.insert({term.a, term.b, term.direction});
        for (int term = 0; term < static_cast<int>(all_.terms.size()); ++term) {
            const Term& now = all_.terms[term];
            if (keys.count({known_[now.a], known_[now.b], now.direction}) == 0)
                newTerms_.push_back(term);
        }
    }

    /// Pins first, then what is known, then what is new: the nearest free cell when one is taken.
    void PlaceRooms(const std::vector<Cell>& old) {
        cells_.resize(graph_.RoomCount());
        Grid grid;
        FreeCells free(grid);
        const auto place = [&](int room, Cell wanted) {
            cells_[room] = free.Nearest(wanted);
            grid.At(cells_[room]).room = room;
        };
        for (int room = 0; room < graph_.RoomCount(); ++room)
            if (graph_.pins[room])
                place(room, *graph_.pins[room]);
        for (int room = 0; room < graph_.RoomCount(); ++room)
            if (!graph_.pins[room] && known_[room] != NoRoom)
                place(room, old[known_[room]]);
        std::vector<Cell> beside(graph_.RoomCount());
        for (const Term& term : all_.terms) {
            if (known_[term.a] == NoRoom)
                beside[term.a] = cells_[term.b];
            if (known_[term.b] == NoRoom)
                beside[term.b] = cells_[term.a];
        }
        for (int room = 0; room < graph_.RoomCount(); ++room)
            if (!graph_.pins[room] && known_[room] == NoRoom)
                place(room, beside[room]);
    }

    /// Tries the cells beside the room's neighbours, in the directions of their exits first, and takes the
    /// best.
    void SettleNewRoom(Drawing& drawing, int room) {
        if (all_.pins[room])
            return;
        std::vector<Cell> candidates;
        const TermLists& lists = drawing.Lists();
        for (const int* k = lists.begin(room); k != lists.end(room); ++k) {
            const Term& term = all_.terms[*k];
            const Cell other = drawing.Of(term.a == room ? term.b : term.a);
            for (int length = 1; term.direction != Anywhere && length <= 4; ++length)
                candidates.push_back(other + (term.a == room ? -length : length) * Step(term.direction));
            const std::vector<Cell> near = CellsNear(other);
            candidates.insert(candidates.end(), near.begin(), near.end());
        }
        for (const Cell cell : candidates) {
            if (drawing.RoomAt(cell) != NoRoom)
                continue;
            const Cell shift = cell - drawing.Of(room);
            if (drawing.Move({room}, shift) >= 0)
                drawing.Move({room}, -shift);
        }
    }

    const MapGraph& graph_;
    Effort& effort_;
    std::vector<int> known_; // for each room its number before the edit
    Group all_;
    std::vector<int> newTerms_;
    std::vector<Cell> cells_;
};

} // namespace

std::vector<Cell> LayOutAfterEdit(const PlacedMap& before, const MapGraph& graph,
                                  const LayoutControl& control) {
    constexpr std::int64_t Most = 500'000'000;
    Effort effort(
        control.steps.value_or(Most), control.stop ? control.stop : [] { return false; });
    Editor editor(before, graph, effort);
    return editor.IsAnotherGame() ? LayOut(graph, control) : editor.LayOut();
}

} // namespace zem::map
