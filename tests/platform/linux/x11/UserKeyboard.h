#pragma once

#include "tests/platform/linux/x11/XClient.h"

#include <bitset>

namespace kestrel::test {

// The real keyboard of the user. This client posts key events for that device.
class UserKeyboard : public XClient {
public:
    explicit UserKeyboard(const std::string& display);

    void press(xcb_keycode_t key) const;
    void release(xcb_keycode_t key) const;

    // Releases the key ahead of the requests that the connection has not written yet.
    void releaseThrough(xcb_connection_t* connection, xcb_keycode_t key) const;

    // XKB's effective and locked modifiers, as applications see them.
    [[nodiscard]] unsigned modifiers() const;
    [[nodiscard]] unsigned lockedModifiers() const;
    // The keys that applications see as down, from all devices.
    [[nodiscard]] std::bitset<256> keysDown() const;
    // True if both settings of the server let the device repeat held keys.
    [[nodiscard]] bool repeats(std::uint8_t device) const;

    [[nodiscard]] std::uint8_t device() const { return m_device; }
    [[nodiscard]] std::uint8_t xtestDevice() const { return m_xtestDevice; }

private:
    void post(xcb_connection_t* connection, bool down, xcb_keycode_t key) const;

    std::uint8_t m_inputEvent = 0;
    std::uint8_t m_device = 0;
    std::uint8_t m_xtestDevice = 0;
};

} // namespace kestrel::test
