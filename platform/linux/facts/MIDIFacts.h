#pragma once

#include "platform/SystemFacts.h"

namespace kestrel {

// The JACK server or PipeWire, and its MIDI clients. Waits for the server for some seconds at most.
[[nodiscard]] SystemFacts::MIDIService midiFacts(long kestrel);

// The library in a list of mappings as the kernel gives it. No value when it names no libjack.
[[nodiscard]] std::optional<SystemFacts::Library> libraryIn(const std::string& mappings);

} // namespace kestrel
