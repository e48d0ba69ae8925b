#pragma once

#include "link/Clock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

namespace kestrel {

// One thing that has happened, and what became of it. It has a fixed size, so that keeping it needs
// no memory of its own.
class ActivityEvent {
public:
    enum class Kind : std::uint8_t {
        Packet, // from the console
        LinkOpened, // text: the device
        LinkRebuilt, // text: why
        NoConsole, // the link was opened, and no console was there
        NoMIDIService, // the MIDI service refused the link
        WorkstationMissing, // the workstation does not run
        WorkstationFound, // it runs again
        ConsoleSilent, // no heartbeat for more than five seconds
        PacketsLost // packets from the console may have been lost
    };
    enum class Outcome : std::uint8_t {
        Ignored, // the packet has no meaning
        Awaited, // the packet has selected a zone; the next one says more
        Answered,
        NotAnswered,
        Shown,
        Typed, // text: the shortcuts
        Released, // text: the shortcuts
        OtherInFront, // text: the application in front; empty if none is
        NoShortcut,
        NoSuchKey,
        NotPermitted,
        KeyUnknown, // text: the shortcuts, which the present keyboard does not have
        SessionUnavailable // the session takes no keys at present
    };

    static constexpr std::size_t KeptBytes = 128; // more than the longest packet of the console
    static constexpr std::size_t TextBytes = 62;

    ActivityEvent() = default;
    ActivityEvent(Kind kind, Clock::TimePoint time, Clock::WallTime wallTime = {})
        : m_time(time)
        , m_wallTime(wallTime)
        , m_kind(kind)
    {
    }

    // Keeps the first KeptBytes of the packet and its whole size.
    void setPacket(std::span<const std::uint8_t> packet);
    // Keeps the first TextBytes of UTF-8, and no part of a character.
    void setText(std::string_view text);
    void setOutcome(Outcome outcome) { m_outcome = outcome; }

    [[nodiscard]] Clock::TimePoint time() const { return m_time; }
    [[nodiscard]] Clock::WallTime wallTime() const { return m_wallTime; }
    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] Outcome outcome() const { return m_outcome; }
    // The bytes that were kept.
    [[nodiscard]] std::span<const std::uint8_t> bytes() const;
    [[nodiscard]] std::size_t packetSize() const { return m_packetSize; }
    [[nodiscard]] std::string_view text() const { return { m_text.data(), m_textSize }; }

private:
    Clock::TimePoint m_time {};
    Clock::WallTime m_wallTime {};
    std::uint32_t m_packetSize = 0;
    Kind m_kind = Kind::Packet;
    Outcome m_outcome = Outcome::Ignored;
    std::uint8_t m_textSize = 0;
    std::array<std::uint8_t, KeptBytes> m_bytes;
    std::array<char, TextBytes> m_text;
};

static_assert(std::is_trivially_copyable_v<ActivityEvent>);

} // namespace kestrel
