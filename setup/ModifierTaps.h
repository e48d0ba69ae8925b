#pragma once

#include <QEvent>
#include <QKeyEvent>

#include <cstdint>
#include <optional>

namespace kestrel {

// Recognises a modifier key that is tapped twice, alone and quickly. A capture field takes every
// other key, so this is the way out of it without the mouse.
class ModifierTaps {
public:
    enum class Tapped { Shift, Option };

    static constexpr std::uint64_t LongestMs = 500; // from the first press to the second

    // Takes each key event in turn. Has a value at the second release.
    [[nodiscard]] std::optional<Tapped> take(const QKeyEvent& event)
    {
        if (event.isAutoRepeat())
            return std::nullopt;
        const int key = event.key();
        if (event.type() == QEvent::KeyPress) {
            const bool isNext = key == m_key && m_presses == 1 && !m_isDown
                && event.timestamp() - m_pressedMs <= LongestMs;
            m_presses = nameOf(key) && !m_isDown ? (isNext ? 2 : 1) : 0;
            m_key = key;
            m_pressedMs = event.timestamp();
            m_isDown = true;
            return std::nullopt;
        }
        m_isDown = false;
        if (key != m_key)
            m_presses = 0;
        if (m_presses != 2)
            return std::nullopt;
        m_presses = 0;
        return nameOf(key);
    }

    // For a field that gets or loses the focus: releases may come to others meanwhile.
    void forget() { *this = {}; }

private:
    [[nodiscard]] static std::optional<Tapped> nameOf(int key)
    {
        if (key == Qt::Key_Shift)
            return Tapped::Shift;
        return key == Qt::Key_Alt ? std::optional(Tapped::Option) : std::nullopt;
    }

    int m_key = 0;
    int m_presses = 0; // of that key, alone, one after the other
    bool m_isDown = false;
    std::uint64_t m_pressedMs = 0;
};

} // namespace kestrel
