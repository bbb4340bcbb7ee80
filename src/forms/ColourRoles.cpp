#include "forms/ColourRoles.h"

#include <QColor>
#include <QPalette>

#include <iterator>

namespace zem {

namespace {

struct Shades {
    QRgb light;
    QRgb dark;
};

/// Each is at least 4.5 : 1 on the grounds that it is read on.
constexpr Shades ShadesOf(ColourRole role) {
    switch (role) {
    case ColourRole::Hairline:
        return {0xFFD9D5CA, 0xFF3B4046};
    case ColourRole::SecondaryText:
        return {0xFF6D6A62, 0xFF9B978D};
    case ColourRole::Accent:
        return {0xFF1F6F8B, 0xFF6CB6D0};
    case ColourRole::MapGround:
        return {0xFFFAF8F2, 0xFF181A1D};
    case ColourRole::Room:
        return {0xFFFFFFFF, 0xFF262A2F};
    case ColourRole::Frame:
        return {0xFF8A8578, 0xFF7C8289};
    case ColourRole::Exit:
        return {0xFF5F6B73, 0xFFA3ADB5};
    case ColourRole::Place:
        return {0xFF9A8FB0, 0xFFA99CC4};
    case ColourRole::Error:
        return {0xFFB3261E, 0xFFF2877E};
    case ColourRole::Warning:
        return {0xFFA34805, 0xFFF0A35E};
    case ColourRole::True:
        return {0xFF2E7D4F, 0xFF7CC799};
    default:
        return {0xFFE3EEF3, 0xFF1B2A31};
    }
}

constexpr Shades Regions[] = {{0xFFE3EEF3, 0xFF1B2A31}, {0xFFF1EAD8, 0xFF2B271D}, {0xFFE6EFE2, 0xFF1E2A20}};

QColor ShadeFor(const Shades& shades, const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Window).lightness() < 128;
    return isDark ? shades.dark : shades.light;
}

} // namespace

QColor ColourOf(ColourRole role, const QPalette& palette) {
    switch (role) {
    case ColourRole::Window:
        return palette.color(QPalette::Window);
    case ColourRole::Pane:
        return palette.color(QPalette::Base);
    case ColourRole::Text:
        return palette.color(QPalette::Text);
    case ColourRole::Selection:
        return palette.color(QPalette::Highlight);
    default:
        return ShadeFor(ShadesOf(role), palette);
    }
}

QColor RegionColour(int region, const QPalette& palette) {
    constexpr int Given = static_cast<int>(std::size(Regions));
    constexpr int Turn = 47; // degrees, so that neighbours of one base colour differ
    const QColor base = ShadeFor(Regions[region % Given], palette);
    const int hue = (base.hslHue() + Turn * (region / Given)) % 360;
    return QColor::fromHsl(hue, base.hslSaturation(), base.lightness());
}

} // namespace zem
