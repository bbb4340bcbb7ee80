#pragma once

class QComboBox;

namespace zem {

/// From now on the entries that contain what the author types into the box are offered below it. What is
/// typed stays as typed, whether or not it is one of them: the arrow keys then open the list and choose
/// nothing by themselves. In place of the box's own completer.
void OfferMatches(QComboBox& box);

} // namespace zem
