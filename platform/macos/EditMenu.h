#pragma once

namespace kestrel {

// Gives the application an Edit menu while the user types into a file panel, and only then. AppKit
// finds ⌘V, ⌘A and the like of a text field, such as the name in a save panel, in the menu alone.
// At other times the menu would take these shortcuts from the fields that capture shortcuts.
void offerEditMenuToFilePanels();

} // namespace kestrel
