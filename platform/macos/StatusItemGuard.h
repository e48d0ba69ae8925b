#pragma once

namespace kestrel {

// Keeps Qt from reading the click count of the current event when the status item is used, as it
// does up to version 6.11. For an event that does not come from the mouse, which status items get
// from macOS 27 on, that raises an exception and ends the program. Nothing is lost, because the
// system itself opens the menu. Call it once the application object exists.
void guardStatusItem();

} // namespace kestrel
