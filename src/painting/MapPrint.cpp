#include "painting/MapPrint.h"

#include "base/KelError.h"
#include "painting/MapMarks.h"
#include "painting/MapPicture.h"

#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace zem {

namespace {

constexpr double PrintMargin = 24; // around the map, in its units
constexpr double UnitsPerInch = 96;
constexpr double SmallestPrint = .5; // of the full size
constexpr double LargestPrint = 1;

} // namespace

void PrintMap(QPagedPaintDevice& printer, const routing::RoutedMap& map) {
    const QRectF all = ToQt(map.Bounds().Grown(PrintMargin));
    printer.setPageOrientation(all.width() > all.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    const double unit = printer.logicalDpiX() / UnitsPerInch;
    const QSizeF page = QSizeF(printer.width(), printer.height()) / unit; // at full size
    const double fit = std::min(page.width() / all.width(), page.height() / all.height());
    const double scale = std::clamp(fit, SmallestPrint, LargestPrint);
    const QSizeF part = page / scale;
    QPainter painter;
    if (!painter.begin(&printer))
        throw KelError("the printer takes no pages");
    const int columns = std::max(1, static_cast<int>(std::ceil(all.width() / part.width() - .001)));
    const int rows = std::max(1, static_cast<int>(std::ceil(all.height() / part.height() - .001)));
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            if ((row > 0 || column > 0) && !printer.newPage())
                throw KelError("the printer takes no more pages");
            painter.save();
            painter.setClipRect(QRectF(QPointF(), part * scale * unit));
            const QPointF corner(column * part.width(), row * part.height());
            PaintPart(painter, map, QRectF(all.topLeft() + corner, part), scale * unit);
            painter.restore();
        }
}

} // namespace zem
