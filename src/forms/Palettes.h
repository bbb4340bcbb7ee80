#pragma once

#include "qt/Look.h"

class QPalette;

namespace zem {

/// Gives all windows, also those that are open, the style and colours of the look.
void ApplyLook(Look look);

/// Gives all windows, also those that are open, letters of this size in per cent of the desktop's.
void ApplyLetterSize(int percent);

/// The light colours whatever the look is: for what is printed or saved as a picture.
QPalette LightPalette();

} // namespace zem
