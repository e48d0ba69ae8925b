#pragma once

namespace kestrel {

// The toolkit gives the program an application menu that is never on the screen, and its
// shortcuts, to quit and to hide, would be taken there before they reach a field that captures
// them. Once the application object is there.
void dropApplicationMenuShortcuts();

} // namespace kestrel
