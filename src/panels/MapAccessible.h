#pragma once

namespace zem {

class MapCanvas;

/// Makes every room of a map an item of its own for screen readers. Once is enough.
void InstallMapAccessibility();

/// Other rooms are shown.
void MapAccessibilityChanged(MapCanvas& canvas);

/// The keys work on this room now.
void RoomGotFocus(MapCanvas& canvas, int room);

} // namespace zem
