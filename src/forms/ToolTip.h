#pragma once

#include <QString>

namespace zem {

/// A tool tip that shows the author's text or a path literally, whatever looks like a tag or an entity in it,
/// and breaks long lines between words and after slashes. Of a very long text only the beginning is shown;
/// empty for an empty text.
QString ToolTipOf(const QString& text);

} // namespace zem
