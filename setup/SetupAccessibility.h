#pragma once

namespace kestrel {

// Registers with Qt how assistive technology sees the setup window and its keys. Further calls do
// no harm.
void installSetupAccessibility();

} // namespace kestrel
