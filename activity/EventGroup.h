#pragma once

#include "activity/ActivityEvent.h"

namespace kestrel {

// What people want to see or hide together.
enum class EventGroup : std::uint8_t {
    Keys,
    Panel, // display, knobs and lamps
    Heartbeat,
    Link,
    Unknown // packets without a meaning
};

inline constexpr std::size_t EventGroups = 5;

[[nodiscard]] EventGroup groupOf(const ActivityEvent& event);

} // namespace kestrel
