#include "activity/ActivityEvent.h"

#include <algorithm>

namespace kestrel {

void ActivityEvent::setPacket(std::span<const std::uint8_t> packet)
{
    m_packetSize = static_cast<std::uint32_t>(packet.size());
    std::copy_n(packet.begin(), std::min(packet.size(), KeptBytes), m_bytes.begin());
}

void ActivityEvent::setText(std::string_view text)
{
    const auto continues = [](char byte) { return (byte & 0xC0) == 0x80; };
    std::size_t size = std::min(text.size(), TextBytes);
    while (size > 0 && size < text.size() && continues(text[size]))
        --size;
    std::copy_n(text.begin(), size, m_text.begin());
    m_textSize = static_cast<std::uint8_t>(size);
}

std::span<const std::uint8_t> ActivityEvent::bytes() const
{
    return std::span(m_bytes).first(std::min<std::size_t>(m_packetSize, KeptBytes));
}

} // namespace kestrel
