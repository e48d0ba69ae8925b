#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// Names the bytes of the console's MIDI traffic that have a meaning. docs/protocol.md says what
// they do.
namespace kestrel::ConsoleProtocol {

using Byte = std::uint8_t;

// Status bytes.
inline constexpr Byte NoteOn = 0x90;
// A controller on channel 1. All controllers below are sent with this status.
inline constexpr Byte ControlChange = 0xB0;
inline constexpr Byte SystemExclusive = 0xF0;
inline constexpr Byte EndOfExclusive = 0xF7;

inline constexpr std::array<Byte, 3> Heartbeat { NoteOn, 0x00, 0x00 };
inline constexpr std::array<Byte, 3> HeartbeatAnswer { NoteOn, 0x00, 0x7F };

// A message about a lamp or a key takes two controllers: the first selects the zone, the second
// names the port.
inline constexpr Byte LampZoneSelect = 0x0C;
inline constexpr Byte LampZone = 0x1C;
inline constexpr Byte LampPort = 0x2C;
inline constexpr Byte LampLit = 0x40; // added to the lamp's number when the lamp is lit
inline constexpr Byte Lamps = 8;

inline constexpr Byte KeyZoneSelect = 0x0F;
inline constexpr Byte KeyZone = 0x40;
inline constexpr Byte KeyPort = 0x2F;
inline constexpr Byte KeyPressed = 0x40; // added to the key's number when the key is pressed
inline constexpr Byte Keys = 12;

// Each knob has one controller. Its value describes the knob's ring of lamps: a position, a mode,
// and whether the lower lamp is lit.
inline constexpr Byte FirstKnob = 0x18;
inline constexpr Byte KnobMask = 0x03; // the bits that number the knob
// The low four bits of FirstKnob. The panel identifies knobs by the low four bits.
inline constexpr Byte FirstKnobLow = 0x08;
inline constexpr Byte Knobs = 4;
namespace Ring {
inline constexpr Byte Lamps = 11;
inline constexpr Byte MiddleLamp = 6;
inline constexpr Byte PositionBits = 0x0F;
inline constexpr Byte ModeBits = 0x30; // one of the four modes below
inline constexpr Byte OneLamp = 0x00;
inline constexpr Byte FromMiddle = 0x10;
inline constexpr Byte FromFirst = 0x20;
inline constexpr Byte BothSides = 0x30;
inline constexpr Byte LowerLamp = 0x40;
} // namespace Ring

// A text message for the display consists of the header, records of a zone and its characters, and
// EndOfExclusive.
inline constexpr std::size_t DisplayCommandAt = 6;
inline constexpr Byte DisplayCommand = 0x12;
inline constexpr std::array<Byte, 7> DisplayHeader { SystemExclusive, 0x00, 0x00, 0x66, 0x05, 0x00,
    DisplayCommand };
inline constexpr Byte Zones = 10;
inline constexpr std::size_t ZoneCharacters = 10;

} // namespace kestrel::ConsoleProtocol
