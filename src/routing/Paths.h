#pragma once

#include <vector>

/// Points and curves in the units of the map: pixels at full size, x to the east and y to the south. The room
/// in the cell (0, 0) has its middle at (0, 0).
namespace zem::routing {

struct Point {
    double x = 0;
    double y = 0;

    friend constexpr Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
    friend constexpr Point operator*(double k, Point a) { return {k * a.x, k * a.y}; }
    friend constexpr bool operator==(Point a, Point b) = default;
};

constexpr double Dot(Point a, Point b) {
    return a.x * b.x + a.y * b.y;
}

constexpr double Cross(Point a, Point b) {
    return a.x * b.y - a.y * b.x;
}

double Distance(Point a, Point b);

/// The vector of length 1 in the direction of a; the vector itself when it has none.
Point Unit(Point a);

struct Segment {
    Point a;
    Point b;
};

/// A rectangle with its sides along the axes.
struct Rect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    Rect Grown(double by) const { return {left - by, top - by, right + by, bottom + by}; }
    bool Contains(Point point) const {
        return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
    }
    bool Meets(const Rect& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    void Include(Point point);
};

/// Whether a part of the segment lies inside the rectangle; touching its edge is not inside.
bool RunsThrough(const Segment& segment, const Rect& rect);

/// Whether the segments cross in a point that is an end of neither.
bool DoCross(const Segment& one, const Segment& other);

/// The length on which two nearly parallel segments run side by side, closer than 6; else 0.
double SideBySide(const Segment& one, const Segment& other);

/// A straight piece, or a cubic curve with two handles.
struct Piece {
    Point handle1;
    Point handle2;
    Point end;
    bool isCurve = false;
};

/// A line from its start through its pieces.
struct Path {
    Point start;
    std::vector<Piece> pieces;

    bool IsEmpty() const { return pieces.empty(); }
    Point End() const { return pieces.empty() ? start : pieces.back().end; }
    void LineTo(Point end) { pieces.push_back({{}, {}, end, false}); }
    void CurveTo(Point handle1, Point handle2, Point end) { pieces.push_back({handle1, handle2, end, true}); }

    /// The path as straight segments: a curve becomes some, none of length 0.
    std::vector<Segment> Flattened() const;
};

/// The point that lies so far along the segments from their start, and the direction there, of length 1.
struct PointOnPath {
    Point point;
    Point direction;
};
PointOnPath Along(const std::vector<Segment>& segments, double distance);

double LengthOf(const std::vector<Segment>& segments);

} // namespace zem::routing
