#pragma once

#include "qt/Look.h"

namespace zem {

/// Gives all windows, also those that are open, the style and colours of the look.
void ApplyLook(Look look);

} // namespace zem
