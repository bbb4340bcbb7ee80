#include "routing/Paths.h"

#include <algorithm>
#include <cmath>

namespace zem::routing {

namespace {

constexpr double Near = 6;      // as close as lines get without being taken for one
constexpr double Parallel = .2; // the sine of the angle under which lines count as parallel

Point OnCurve(Point a, const Piece& piece, double t) {
    const double s = 1 - t;
    return s * s * s * a + 3 * s * s * t * piece.handle1 + 3 * s * t * t * piece.handle2 +
           t * t * t * piece.end;
}

/// Enough for a curve of this size to look round.
int StepsFor(Point a, const Piece& piece) {
    const double length = Distance(a, piece.handle1) + Distance(piece.handle1, piece.handle2) +
                          Distance(piece.handle2, piece.end);
    return std::clamp(static_cast<int>(length / 12), 4, 24);
}

} // namespace

double Distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

Point Unit(Point a) {
    const double length = std::hypot(a.x, a.y);
    return length == 0 ? a : 1 / length * a;
}

void Rect::Include(Point point) {
    left = std::min(left, point.x);
    right = std::max(right, point.x);
    top = std::min(top, point.y);
    bottom = std::max(bottom, point.y);
}

bool RunsThrough(const Segment& segment, const Rect& rect) {
    double from = 0;
    double to = 1;
    const Point way = segment.b - segment.a;
    // Cuts off what lies on the outer side of an edge: where the distance from it is not positive.
    const auto clip = [&](double distance, double change) {
        if (change == 0)
            return distance > 0;
        const double at = -distance / change;
        if (change > 0)
            from = std::max(from, at);
        else
            to = std::min(to, at);
        return true;
    };
    return clip(segment.a.x - rect.left, way.x) && clip(rect.right - segment.a.x, -way.x) &&
           clip(segment.a.y - rect.top, way.y) && clip(rect.bottom - segment.a.y, -way.y) && from < to;
}

bool DoCross(const Segment& one, const Segment& other) {
    const Point way = one.b - one.a;
    const Point otherWay = other.b - other.a;
    const double a = Cross(way, other.a - one.a);
    const double b = Cross(way, other.b - one.a);
    if ((a > 0) == (b > 0) || a == 0 || b == 0)
        return false;
    const double c = Cross(otherWay, one.a - other.a);
    const double d = Cross(otherWay, one.b - other.a);
    return (c > 0) != (d > 0) && c != 0 && d != 0;
}

double SideBySide(const Segment& one, const Segment& other) {
    const double length = Distance(one.a, one.b);
    const double otherLength = Distance(other.a, other.b);
    if (length == 0 || otherLength == 0)
        return 0;
    const Point way = 1 / length * (one.b - one.a);
    const Point otherWay = 1 / otherLength * (other.b - other.a);
    if (std::abs(Cross(way, otherWay)) > Parallel)
        return 0;
    double from = Dot(other.a - one.a, way);
    double to = Dot(other.b - one.a, way);
    if (from > to)
        std::swap(from, to);
    from = std::max(from, 0.0);
    to = std::min(to, length);
    if (from >= to)
        return 0;
    const Point middle = one.a + (from + to) / 2 * way;
    return std::abs(Cross(middle - other.a, otherWay)) < Near ? to - from : 0;
}

std::vector<Segment> Path::Flattened() const {
    std::vector<Segment> segments;
    Point at = start;
    const auto add = [&](Point to) {
        if (to == at)
            return;
        segments.push_back({at, to});
        at = to;
    };
    for (const Piece& piece : pieces) {
        if (piece.isCurve) {
            const Point begin = at;
            const int steps = StepsFor(begin, piece);
            for (int step = 1; step < steps; ++step)
                add(OnCurve(begin, piece, static_cast<double>(step) / steps));
        }
        add(piece.end);
    }
    return segments;
}

PointOnPath Along(const std::vector<Segment>& segments, double distance) {
    if (segments.empty())
        return {};
    for (const Segment& segment : segments) {
        const double length = Distance(segment.a, segment.b);
        const Point direction = Unit(segment.b - segment.a);
        if (distance <= length)
            return {segment.a + distance * direction, direction};
        distance -= length;
    }
    return {segments.back().b, Unit(segments.back().b - segments.back().a)};
}

double LengthOf(const std::vector<Segment>& segments) {
    double length = 0;
    for (const Segment& segment : segments)
        length += Distance(segment.a, segment.b);
    return length;
}

} // namespace zem::routing
