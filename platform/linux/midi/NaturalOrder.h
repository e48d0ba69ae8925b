#pragma once

#include <string_view>

namespace kestrel {

// True when `left` comes before `right` in natural order, which compares digits as numbers: midi_2
// comes before midi_10.
[[nodiscard]] bool comesNaturallyBefore(std::string_view left, std::string_view right);

} // namespace kestrel
