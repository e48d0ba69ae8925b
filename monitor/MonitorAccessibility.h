#pragma once

namespace kestrel {

// Tells assistive technology what the figures and the plot of the activity window show. Only the
// first call has an effect.
void installMonitorAccessibility();

} // namespace kestrel
