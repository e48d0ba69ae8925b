#include "link/MIDIMessage.h"

#include <algorithm>

namespace kestrel {

MIDIMessage::MIDIMessage(std::int32_t sourceID)
    : m_sourceID(sourceID)
{
}

void MIDIMessage::readPacket(const MIDIPacket& packet, std::uint32_t length)
{
    setReadData(packet.data.first(std::min<std::size_t>(length, packet.data.size())));
    m_length = static_cast<std::uint32_t>(m_size);
}

std::span<const std::uint8_t> MIDIMessage::readData() const
{
    return { m_large ? m_large.get() : m_inline.data(), m_size };
}

void MIDIMessage::setReadData(std::span<const std::uint8_t> data)
{
    m_large = data.size() > InlineSize ? std::make_unique<std::uint8_t[]>(data.size()) : nullptr;
    m_size = data.size();
    std::copy(data.begin(), data.end(), m_large ? m_large.get() : m_inline.data());
}

} // namespace kestrel
