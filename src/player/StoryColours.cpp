#include "player/StoryColours.h"

#include "qt/QtText.h"

#include <QFontDatabase>

#include <algorithm>
#include <cmath>

namespace zem {

namespace {

constexpr double Readable = 4.5;

double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace

QColor ToneOf(const std::string& name, const QPalette& palette) {
    const QString word = ToQt(name).trimmed().toLower();
    // A "#" would begin a number of a colour, which games do not have.
    if (word.isEmpty() || word.startsWith(u'#') || word == QLatin1String("black") ||
        word == QLatin1String("white") || !QColor::isValidColor(word))
        return {};
    const QColor page = palette.color(QPalette::Base);
    const bool isDark = page.lightness() < 128;
    QColor tone(word);
    for (int step = 0; step < 100 && Contrast(tone, page) < Readable; ++step) {
        const int lightness = tone.lightness() + (isDark ? 3 : -3);
        tone.setHsl(tone.hslHue(), tone.hslSaturation(), std::clamp(lightness, 0, 255));
    }
    return tone;
}

QString FontFamily(const std::string& name) {
    const QString wanted = ToQt(name).trimmed();
    for (const QString& family : QFontDatabase::families())
        if (family.compare(wanted, Qt::CaseInsensitive) == 0)
            return family;
    return {};
}

} // namespace zem
