#pragma once

#include "routing/RoutedMap.h"

#include <string>

namespace zem {

enum class PictureFormat { Svg, Pdf, Png };

/// The format that a file name ends in; throws KelError when it is none of .svg, .pdf and .png.
PictureFormat PictureFormatOf(const std::string& fileName);

/// The whole map as the bytes of a picture, in light colours. Needs an application. Throws KelError when it
/// cannot be made.
std::string MapPicture(const routing::RoutedMap& map, PictureFormat format);

} // namespace zem
