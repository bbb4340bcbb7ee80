#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace zem {

/// Lets a file be dropped anywhere on the window. What is no local file is refused while it is still being
/// dragged, and so is everything while another window has to be closed first; of several files the first
/// counts.
/// @param open  gets the full path once the drop is over, so it may ask questions
void AcceptFileDrops(QWidget& window, std::function<void(const QString& path)> open);

} // namespace zem
