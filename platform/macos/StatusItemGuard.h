#pragma once

namespace kestrel {

// Up to version 6.11 the toolkit asks the current event for its clicks whenever the status item is
// used. That raises an exception for events not made by the mouse, as the status item gets them
// from macOS 27 on, and ends the program. What the toolkit would announce is of no use here, since
// the system itself opens the menu: the guard keeps it from asking. Later versions ask first what
// kind of event it is. Once the application object is there.
void guardStatusItem();

} // namespace kestrel
