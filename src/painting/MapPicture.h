#pragma once

#include "routing/RoutedMap.h"

#include <QRectF>

#include <string>

class QPainter;

namespace zem {

enum class PictureFormat { Svg, Pdf, Png };

/// The format that a file name ends in; throws KelError when it is none of .svg, .pdf and .png.
PictureFormat PictureFormatOf(const std::string& fileName);

/// The whole map as the bytes of a picture, in light colours. Needs an application. Throws KelError when it
/// cannot be made.
std::string MapPicture(const routing::RoutedMap& map, PictureFormat format);

/// Paints a part of the map, of as many pixels for each of its units, as it is painted for a picture.
void PaintPart(QPainter& painter, const routing::RoutedMap& map, const QRectF& area, double scale);

} // namespace zem
