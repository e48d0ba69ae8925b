#pragma once

#include "assign/UserAssignFile.h"

#include <bitset>
#include <optional>

namespace kestrel {

// Knows the keys whose typed shortcuts the user left without Assign. An edit unmarks its key, which
// is marked again if the edit is thrown away. Indices are 0-based; others than those of the twelve
// keys are ignored.
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
    // The edits have become the live set.
    void accept()
    {
        leave();
        m_accepted = m_left;
    }
    // The user throws away on purpose all edits since the last time they were accepted. So the keys
    // that were left then are left again, also those that were edited since.
    void discard()
    {
        m_waiting.reset();
        m_left = m_accepted;
    }
    // The keys of the live set are shown again, and what was edited on them is gone.
    void restore() { m_left |= m_accepted; }
    // The keys of another set are shown, for which nothing was typed.
    void clear()
    {
        m_waiting.reset();
        m_left.reset();
    }

    [[nodiscard]] bool contains(int key) const
    {
        return isKey(key) && m_left[static_cast<std::size_t>(key)];
    }

private:
    static bool isKey(int key) { return key >= 0 && key < UserAssignFile::ButtonCount; }

    std::optional<int> m_waiting;
    std::bitset<UserAssignFile::ButtonCount> m_left;
    std::bitset<UserAssignFile::ButtonCount> m_accepted; // left when edits were last accepted
};

} // namespace kestrel
