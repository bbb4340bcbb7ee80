#pragma once

#include "routing/Boxes.h"
#include "routing/LineIndex.h"

namespace zem::routing {

/// What a line pays for a turn of 90 degrees.
inline constexpr double TurnCost = 26;

/// A way from one port to another along the lanes between the boxes: three in each gap, the middle lines of
/// rows and columns, and slanting ones over cells that are empty.
class Lanes {
public:
    Lanes(const Boxes& boxes, const LineIndex& lines) : boxes_(boxes), lines_(lines) {}

    /// The corners of the cheapest way that was found, from port to port; empty when there is none near.
    std::vector<Point> Find(const LineEnd& from, const LineEnd& to);

private:
    struct Node {
        int x = 0; // in lanes: four to a cell
        int y = 0;
    };
    struct State {
        double cost;
        int before; // the state before it, or -1
        int stamp;  // of the search that it belongs to
        bool closed;
    };
    struct Open {
        double estimate;
        int state;
        friend bool operator<(const Open& a, const Open& b) { return a.estimate > b.estimate; }
    };

    static Point PointOf(Node node);
    Node NodeAt(int room, Port port) const;
    void SetWindow(int room, int other);
    bool IsInside(Node node) const;
    int StateOf(Node node, int direction) const;
    Node NodeOf(int state) const;
    bool IsBlocked(Node node) const;
    void Reach(Node node, int direction, double cost, int before);
    void Expand(int state, double cost);
    std::vector<Point> Trace(int state, const LineEnd& from, const LineEnd& to) const;

    const Boxes& boxes_;
    const LineIndex& lines_;
    std::vector<State> states_;
    std::vector<Open> open_;
    int search_ = 0;
    Node first_; // of the window
    int width_ = 0;
    int height_ = 0;
    Node goal_;
    int goalDirection_ = 0;
};

} // namespace zem::routing
