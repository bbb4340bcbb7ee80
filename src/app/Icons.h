#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace zem {

/// One of the program's line icons in the text colour of the palette, crisp at any size, and paler when its
/// control is disabled.
QIcon ThemedIcon(const QString& name, const QPalette& palette);

} // namespace zem
