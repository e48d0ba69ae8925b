#include "platform/linux/midi/EndpointNames.h"

namespace kestrel {

MIDIEndpoint EndpointNames::endpointNamed(const std::string& portName)
{
    const auto [at, isNew] = m_endpoints.try_emplace(portName, 0u);
    if (isNew) {
        m_names.push_back(portName);
        at->second = static_cast<MIDIEndpoint>(m_names.size());
    }
    return at->second;
}

const std::string* EndpointNames::nameOf(MIDIEndpoint endpoint) const
{
    return endpoint >= 1 && endpoint <= m_names.size() ? &m_names[endpoint - 1] : nullptr;
}

} // namespace kestrel
