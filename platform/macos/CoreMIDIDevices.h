#pragma once

#include "platform/MIDIServices.h"

namespace kestrel::CoreMIDIDevices {

// Lists every device of the MIDI setup, driver by driver, including those that are offline. An
// object that vanishes while it is read stays in the list as an empty one, so that the others keep
// their places.
[[nodiscard]] std::vector<MIDIDevice> snapshot();

// No value when the endpoint does not exist or has no unique ID.
[[nodiscard]] std::optional<std::int32_t> uniqueIDOf(MIDIEndpoint endpoint);

} // namespace kestrel::CoreMIDIDevices
