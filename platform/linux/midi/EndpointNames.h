#pragma once

#include "platform/MIDIServices.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace kestrel {

// Gives each port name a reference that stays the same for as long as the program runs.
class EndpointNames {
public:
    [[nodiscard]] MIDIEndpoint endpointNamed(const std::string& portName);
    // Returns null for a reference that was never given out.
    [[nodiscard]] const std::string* nameOf(MIDIEndpoint endpoint) const;

private:
    std::vector<std::string> m_names; // reference k has the name at index k - 1
    std::unordered_map<std::string, MIDIEndpoint> m_endpoints;
};

} // namespace kestrel
