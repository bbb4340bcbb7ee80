#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace zem::test {

inline double Luminance(const QColor& colour) {
    const auto linear = [](double part) { return std::pow(part, 2.2); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// From 1 to 21; text is easily read from 4.5, and an outline easily seen from 3.
inline double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace zem::test
