#pragma once

namespace kestrel {

// Removes the shortcuts of the application menu. Qt makes that menu although it is never on the
// screen, and its ⌘Q and ⌘H would not reach a capture field. Call it once the application object
// exists.
void dropApplicationMenuShortcuts();

} // namespace kestrel
