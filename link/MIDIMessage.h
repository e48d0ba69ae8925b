#pragma once

#include "platform/MIDIServices.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>

namespace kestrel {

// One whole MIDI packet. It may carry several MIDI messages.
class MIDIMessage {
public:
    MIDIMessage() = default;
    // `sourceID` is the unique ID of the source endpoint that the packet came from.
    explicit MIDIMessage(std::int32_t sourceID);
    MIDIMessage(const MIDIMessage&) = delete;
    MIDIMessage& operator=(const MIDIMessage&) = delete;

    // Copies the first `length` bytes of the packet's data, or all of them if it has fewer.
    void readPacket(const MIDIPacket& packet, std::uint32_t length);

    [[nodiscard]] std::span<const std::uint8_t> readData() const;
    void setReadData(std::span<const std::uint8_t> data);

    // The number of bytes that readPacket() copied. It is 0 in a message whose data was only set.
    [[nodiscard]] std::uint32_t length() const { return m_length; }
    void setLength(std::uint32_t length) { m_length = length; }

    [[nodiscard]] std::int32_t sourceID() const { return m_sourceID; }
    void setSourceID(std::int32_t sourceID) { m_sourceID = sourceID; }

private:
    // The packets of the console fit into this many bytes. Only longer packets go to the heap.
    static constexpr std::size_t InlineSize = 128;

    std::size_t m_size = 0;
    std::array<std::uint8_t, InlineSize> m_inline {};
    std::unique_ptr<std::uint8_t[]> m_large;
    std::uint32_t m_length = 0;
    std::int32_t m_sourceID = 0;
};

} // namespace kestrel
