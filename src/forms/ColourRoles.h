#pragma once

class QColor;
class QPalette;

namespace zem {

/// What a colour of the program means. Widgets ask for a meaning and never name a colour themselves.
enum class ColourRole {
    Window,
    Pane, // the ground of lists, boxes and pages
    Hairline,
    Text,
    SecondaryText,
    Accent, // what is active, and what the player typed
    Selection,
    MapGround,
    Room,
    Frame, // of a room or a control
    Exit,
    Place,
    Error,
    Warning,
    True, // a condition that was met
    Region,
};

/// The colour of a role beside the colours of the palette, light or dark as its window is. Window, pane, text
/// and selection are the palette's own, so that a desktop's colours stay together.
QColor ColourOf(ColourRole role, const QPalette& palette);

/// The ground of one of several regions of a map, told apart by their hue; from 0.
QColor RegionColour(int region, const QPalette& palette);

} // namespace zem
