#pragma once

#include "platform/MIDIServices.h"

namespace kestrel::CoreMIDIDevices {

// Every device of the MIDI setup, driver by driver, also those that are offline. An object that
// vanishes while it is read keeps its place with nothing in it, so that the others keep theirs.
[[nodiscard]] std::vector<MIDIDevice> snapshot();

} // namespace kestrel::CoreMIDIDevices
