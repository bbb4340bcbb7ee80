#include "painting/MapPicture.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "forms/ColourRoles.h"
#include "forms/Palettes.h"
#include "painting/MapMarks.h"
#include "painting/MapPainter.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>

namespace zem {

namespace {

constexpr double Margin = 24;           // around the map, in its units
constexpr double PngScale = 2;          // pixels for a unit, so that small letters are sharp
constexpr double MostPngPixels = 100e6; // a larger map gets fewer for each unit
constexpr int LargestPngSide = 30'000;
constexpr double PointsForUnit = .75;     // of a PDF: a unit is a 96th of an inch
constexpr double LongestPdfSide = 14'000; // points; readers take no more

QByteArray Svg(const routing::RoutedMap& map, const QRectF& area) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(area.size().toSize());
    svg.setViewBox(QRectF(QPointF(), area.size()));
    QPainter painter(&svg);
    PaintPart(painter, map, area, 1);
    painter.end();
    return bytes;
}

QByteArray Pdf(const routing::RoutedMap& map, const QRectF& area) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&buffer);
    const double points = std::min(PointsForUnit, LongestPdfSide / std::max(area.width(), area.height()));
    pdf.setResolution(72);
    pdf.setPageMargins(QMarginsF());
    pdf.setPageSize(QPageSize(area.size() * points, QPageSize::Point));
    QPainter painter(&pdf);
    PaintPart(painter, map, area, points);
    painter.end();
    return bytes;
}

QByteArray Png(const routing::RoutedMap& map, const QRectF& area) {
    const double fits = std::sqrt(MostPngPixels / (area.width() * area.height()));
    const double scale =
        std::min({PngScale, fits, LargestPngSide / area.width(), LargestPngSide / area.height()});
    QImage image((area.size() * scale).toSize().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    if (image.isNull())
        throw KelError("there is not enough memory for a picture of this map");
    QPainter painter(&image);
    PaintPart(painter, map, area, scale);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

void PaintPart(QPainter& painter, const routing::RoutedMap& map, const QRectF& area, double scale) {
    MapView view;
    view.visible = area;
    view.zoom = std::max(scale, ZoomOfNames); // a picture can be looked at closely, however small it is
    view.palette = LightPalette();
    painter.scale(scale, scale);
    painter.translate(-area.topLeft());
    painter.fillRect(area, ColourOf(ColourRole::MapGround, view.palette));
    MapPainter(map).Paint(painter, view);
}

PictureFormat PictureFormatOf(const std::string& fileName) {
    const std::string name = Lower(fileName);
    if (name.ends_with(".svg"))
        return PictureFormat::Svg;
    if (name.ends_with(".pdf"))
        return PictureFormat::Pdf;
    if (name.ends_with(".png"))
        return PictureFormat::Png;
    throw KelError("a picture of a map ends in .svg, .pdf or .png");
}

std::string MapPicture(const routing::RoutedMap& map, PictureFormat format) {
    const QRectF area = ToQt(map.Bounds().Grown(Margin));
    const QByteArray bytes = format == PictureFormat::Svg   ? Svg(map, area)
                             : format == PictureFormat::Pdf ? Pdf(map, area)
                                                            : Png(map, area);
    if (bytes.isEmpty())
        throw KelError("the picture could not be made");
    return bytes.toStdString();
}

} // namespace zem
