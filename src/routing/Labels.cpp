#include "routing/Labels.h"

#include <algorithm>
#include <unordered_map>

namespace zem::routing {

namespace {

constexpr double LetterWidth = 6.2; // of the small letters that names of stubs are set in
constexpr double Height = 13;
constexpr double Gap = 3;    // between the end of the stub and its name
constexpr double Beside = 8; // from the middle of a diamond to its words
constexpr double Widest = 110;
constexpr double Narrowest = 40; // a longer name may be cut to this

class LabelPlacer {
public:
    LabelPlacer(const Boxes& boxes, const LineIndex& lines) : boxes_(boxes), lines_(lines) {}

    void Place(int line, bool far, Point tip, Port port, const std::string& text) {
        Put({line, far, {}, text, false}, [&](double width) { return Candidates(tip, port, width); });
    }

    /// Puts a condition beside its diamond; where the line runs sideways above or below it, or farther, where
    /// a box is in the way.
    void PlaceCondition(int line, Point diamond, Port port, const std::string& text) {
        Put({line, false, {}, text, true}, [&](double width) {
            std::vector<Rect> places;
            if (PortStep(port).y != 0)
                for (const double left : {diamond.x + Beside, diamond.x - Beside - width})
                    places.push_back({left, diamond.y - Height / 2, left + width, diamond.y + Height / 2});
            for (const double away : {Beside, BoxHeight / 2 + Gap})
                for (const double top : {diamond.y - away - Height, diamond.y + away})
                    places.push_back({diamond.x - width / 2, top, diamond.x + width / 2, top + Height});
            return places;
        });
    }

    std::vector<StubLabel> Take() { return std::move(labels_); }

private:
    /// Takes the first place that is free, rather narrow than over lines.
    template <class Places>
    void Put(StubLabel label, Places placesFor) {
        const double whole = std::min(Widest, static_cast<double>(label.text.size()) * LetterWidth + 6);
        for (const bool overLines : {false, true})
            for (const double width : {whole, std::min(whole, Narrowest)})
                for (const Rect& place : placesFor(width))
                    if (IsFree(place) && (overLines || lines_.LinesNear(place).empty())) {
                        taken_[KeyOf(CellOf({place.left, place.top}))].push_back(place);
                        label.place = place;
                        labels_.push_back(std::move(label));
                        return;
                    }
    }

    static std::uint64_t KeyOf(map::Cell cell) {
        return std::uint64_t{static_cast<std::uint32_t>(cell.x)} << 32 | static_cast<std::uint32_t>(cell.y);
    }

    /// Straight on first, then to the sides.
    static std::vector<Rect> Candidates(Point tip, Port port, double width) {
        const Rect right{tip.x + Gap, tip.y - Height / 2, tip.x + Gap + width, tip.y + Height / 2};
        const Rect left{tip.x - Gap - width, right.top, tip.x - Gap, right.bottom};
        const Rect above{tip.x - width / 2, tip.y - Gap - Height, tip.x + width / 2, tip.y - Gap};
        const Rect below{above.left, tip.y + Gap, above.right, tip.y + Gap + Height};
        const map::Cell step = PortStep(port);
        std::vector<Rect> places;
        if (step.x == 0)
            places = {step.y < 0 ? above : below, right, left};
        else
            places = {step.x > 0 ? right : left, above, below};
        return places;
    }

    static map::Cell PortStep(Port port) { return map::Step(port == DoorPort ? 4 : port); }

    bool IsFree(const Rect& place) const {
        if (!boxes_.IsFree(place.Grown(1)))
            return false;
        const map::Cell cell = CellOf({place.left, place.top});
        for (int y = cell.y - 1; y <= cell.y + 1; ++y)
            for (int x = cell.x - 1; x <= cell.x + 1; ++x) {
                const auto bucket = taken_.find(KeyOf({x, y}));
                if (bucket != taken_.end() &&
                    std::any_of(bucket->second.begin(), bucket->second.end(),
                                [&](const Rect& other) { return other.Meets(place); }))
                    return false;
            }
        return true;
    }

    const Boxes& boxes_;
    const LineIndex& lines_;
    std::unordered_map<std::uint64_t, std::vector<Rect>> taken_;
    std::vector<StubLabel> labels_;
};

/// What the unknown room is called that an exit names.
std::string UnknownName(const map::MapGraph& graph, const MapLine& line) {
    return line.from.exit < 0 ? std::string() : graph.exits[static_cast<std::size_t>(line.from.exit)].target;
}

void PlaceConditionOf(LabelPlacer& placer, const map::MapGraph& graph, const Boxes& boxes, int line,
                      const LineEnd& end) {
    if (!end.isScript || end.exit < 0)
        return;
    const std::string& condition = graph.exits[static_cast<std::size_t>(end.exit)].condition;
    const Point diamond = PortPoint(boxes[end.room], end.port) + DiamondFromPort * PortDirection(end.port);
    if (!condition.empty())
        placer.PlaceCondition(line, diamond, end.port, "if " + condition);
}

} // namespace

std::vector<StubLabel> PlaceLabels(const map::MapGraph& graph, const Boxes& boxes, const LineIndex& lines,
                                   const std::vector<MapLine>& stubs) {
    LabelPlacer placer(boxes, lines);
    for (std::size_t k = 0; k < stubs.size(); ++k) {
        const MapLine& line = stubs[k];
        if (line.kind != LineKind::Goto) // the exit itself has a line of its own
            for (const LineEnd* end : {&line.from, &line.to})
                PlaceConditionOf(placer, graph, boxes, static_cast<int>(k), *end);
        if (line.shape != LineShape::Stub || line.path.IsEmpty())
            continue;
        const auto nameOf = [&](int room) { return graph.names[static_cast<std::size_t>(room)]; };
        if (line.to.room != map::NoRoom)
            placer.Place(static_cast<int>(k), false, line.path.End(), line.from.port, nameOf(line.to.room));
        else if (line.kind == LineKind::Unknown)
            placer.Place(static_cast<int>(k), false, line.path.End(), line.from.port,
                         UnknownName(graph, line) + "?");
        if (!line.farPath.IsEmpty())
            placer.Place(static_cast<int>(k), true, line.farPath.End(), line.to.port, nameOf(line.from.room));
    }
    return placer.Take();
}

} // namespace zem::routing
