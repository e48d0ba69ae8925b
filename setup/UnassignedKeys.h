#pragma once

#include "assign/UserAssignFile.h"

#include <bitset>
#include <optional>

namespace kestrel {

// Knows the keys whose typed shortcuts the user left without Assign, until their next edit. Indices
// are 0-based; others than those of the twelve keys are ignored.
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
        if (!isKey(key))
            return;
        m_left.reset(static_cast<std::size_t>(key));
        m_accepted.reset(static_cast<std::size_t>(key));
    }
    // The user has accepted the rest of the edits.
    void accept()
    {
        leave();
        m_accepted = m_left;
    }
    // The user throws away on purpose what was typed since the last time edits were accepted.
    void discard()
    {
        m_waiting.reset();
        m_left = m_accepted;
    }
    // Other keys take the place of these.
    void clear() { *this = {}; }

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
