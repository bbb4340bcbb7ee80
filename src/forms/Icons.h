#pragma once

#include <QIcon>
#include <QString>

namespace zem {

/// One of the program's line icons in the text colour of the application's palette at the time of painting,
/// crisp at any size, and paler when its control is disabled.
QIcon ThemedIcon(const QString& name);

} // namespace zem
