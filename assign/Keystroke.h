#pragma once

#include "platform/KeyCodes.h"

#include <QStringView>

#include <array>
#include <cstdint>
#include <string_view>

namespace kestrel {

// A short text in UTF-8 that needs no memory of its own, because it is written right after a key
// was posted. What has no room is cut off, never inside a character. Control characters become
// blanks, so that the text stays on one line.
class KeystrokeText {
public:
    static constexpr std::size_t Capacity = 62;

    void append(std::string_view text);
    // Such as "⌘S", after a comma if it is not the first.
    void appendShortcut(ModifierFlags flags, QStringView keyName);

    [[nodiscard]] std::string_view view() const { return { m_bytes.data(), m_size }; }

private:
    std::uint8_t m_size = 0;
    std::array<char, Capacity> m_bytes;
};

// What became of one press or release of a console key.
struct Keystroke {
    enum class Outcome : std::uint8_t {
        OtherInFront, // text: the application in front; empty if none is
        Typed, // text: the shortcuts that were posted
        Released, // text: the shortcuts that were posted
        NoSuchKey,
        NoShortcut,
        NotPermitted, // text: the shortcuts
        KeyUnknown, // text: the shortcuts, which the present keyboard does not have
        SessionUnavailable // text: the shortcuts
    };

    Outcome outcome = Outcome::OtherInFront;
    KeystrokeText text = {};
};

} // namespace kestrel
