#pragma once

#include "link/ConsoleProtocol.h"

#include <cstdint>

namespace kestrel {

// Decodes the value byte of a knob: the state of the eleven lamps around the knob and of the single
// lamp below it.
class KnobRing {
public:
    // Which lamps are lit at position p.
    enum class Mode : std::uint8_t {
        OneLamp = ConsoleProtocol::Ring::OneLamp, // lamp p
        FromMiddle = ConsoleProtocol::Ring::FromMiddle, // the middle lamp to lamp p
        FromFirst = ConsoleProtocol::Ring::FromFirst, // the first lamp to lamp p
        // p - 1 lamps to each side of the middle lamp, and the middle lamp itself
        BothSides = ConsoleProtocol::Ring::BothSides,
    };

    static constexpr int Lamps = ConsoleProtocol::Ring::Lamps;
    static constexpr int MiddleLamp = ConsoleProtocol::Ring::MiddleLamp;

    explicit constexpr KnobRing(std::uint8_t value)
        : m_value(value)
    {
    }

    // False for a value that no ring can show; the knob is not drawn then.
    [[nodiscard]] constexpr bool hasPicture() const
    {
        return m_value <= LastValue
            && (m_value & ConsoleProtocol::Ring::PositionBits) <= lastPosition();
    }

    [[nodiscard]] constexpr Mode mode() const
    {
        return static_cast<Mode>(m_value & ConsoleProtocol::Ring::ModeBits);
    }

    // The position is 1 to lastPosition(), or 0 when no lamp of the ring is lit.
    [[nodiscard]] constexpr int position() const
    {
        return hasPicture() ? m_value & ConsoleProtocol::Ring::PositionBits : 0;
    }
    [[nodiscard]] constexpr int lastPosition() const
    {
        return mode() == Mode::BothSides ? MiddleLamp : Lamps;
    }

    [[nodiscard]] constexpr bool isLowerLampLit() const
    {
        return hasPicture() && (m_value & ConsoleProtocol::Ring::LowerLamp) != 0;
    }

    // The value itself numbers the frames of the strip.
    [[nodiscard]] constexpr int frame() const { return m_value; }

    friend constexpr bool operator==(KnobRing, KnobRing) = default;

private:
    static constexpr std::uint8_t LastValue = 0x7F;

    std::uint8_t m_value;
};

} // namespace kestrel
