#pragma once

#include "platform/MIDIServices.h"

namespace kestrel::CoreMIDIDevices {

// Lists every device of the MIDI setup, driver by driver, including those that are offline. An
// object that vanishes while it is read stays in the list as an empty one, so that the others keep
// their places.
[[nodiscard]] std::vector<MIDIDevice> snapshot();

} // namespace kestrel::CoreMIDIDevices
