#pragma once

#include "assign/UserAssignFile.h"

#include <bitset>
#include <optional>

namespace kestrel {

// Knows the keys that were left with shortcuts that had been typed and not assigned. Indices are
// 0-based; others than those of the twelve keys are ignored.
class UnassignedKeys {
public:
    // Whether the fields hold something that waits for Assign, and for which key.
    void setWaiting(bool isWaiting, int key)
    {
        m_waiting = isWaiting && isKey(key) ? std::optional(key) : std::nullopt;
    }
    // The fields are about to show something else: what waits stays behind.
    void leave()
    {
        if (m_waiting)
            m_left.set(static_cast<std::size_t>(*m_waiting));
        m_waiting.reset();
    }
    void edited(int key)
    {
        if (isKey(key))
            m_left.reset(static_cast<std::size_t>(key));
    }
    // Everything that was typed is thrown away on purpose.
    void clear() { *this = {}; }

    [[nodiscard]] bool contains(int key) const
    {
        return isKey(key) && m_left[static_cast<std::size_t>(key)];
    }

private:
    static bool isKey(int key) { return key >= 0 && key < UserAssignFile::ButtonCount; }

    std::optional<int> m_waiting;
    std::bitset<UserAssignFile::ButtonCount> m_left;
};

} // namespace kestrel
