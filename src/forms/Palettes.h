#pragma once

#include "qt/Look.h"

class QPalette;

namespace zem {

/// Gives all windows, also those that are open, the style and colours of the look.
void ApplyLook(Look look);

/// The light colours whatever the look is: for what is printed or saved as a picture.
QPalette LightPalette();

} // namespace zem
