#pragma once

#include <string_view>

namespace kestrel {

// True when `left` comes before `right` for a reader who counts: midi_2 before midi_10.
[[nodiscard]] bool comesNaturallyBefore(std::string_view left, std::string_view right);

} // namespace kestrel
