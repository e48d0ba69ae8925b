#pragma once

#include "activity/ActivityEvent.h"

#include <string>

// Says in words what the console has sent or what has happened to the link.
namespace kestrel::PacketWords {

// Such as "Key 6 pressed", "Display zone 2: FREQ", "Knob 1: 5 of 11, from the left", in UTF-8.
[[nodiscard]] std::string describe(const ActivityEvent& event);

// True for a packet that selects the zone of a key or a lamp and leaves the rest to the next
// packet.
[[nodiscard]] bool selectsZone(std::span<const std::uint8_t> packet);

// True for a packet that presses an assignable key.
[[nodiscard]] bool isKeyPress(const ActivityEvent& event);

// The bytes of the packet as "90 00 7F", with "…" for those that were not kept.
[[nodiscard]] std::string hexadecimal(const ActivityEvent& event);

} // namespace kestrel::PacketWords
