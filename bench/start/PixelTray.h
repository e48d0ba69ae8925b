#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace kestrel::bench {

// A tray that notes when an item asks for a place in it and when its picture has appeared there.
// Times are those of monotonicNanoseconds().
class PixelTray {
public:
    struct Times {
        std::int64_t docked = 0; // the item has asked for its place
        std::int64_t shown = 0; // the first pixel of the item's picture is on the screen
    };

    // Throws std::runtime_error when the display does not answer or has a tray already.
    explicit PixelTray(const std::string& display);

    // Takes the next item in. Missing when none has been shown by the deadline.
    [[nodiscard]] std::optional<Times> takeItem(std::int64_t deadline);
    // Returns when the last item has left the tray, which it does when its program ends.
    void awaitEmpty(std::int64_t deadline);

private:
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    void claim();
    [[nodiscard]] std::optional<xcb_window_t> nextRequest(std::int64_t deadline);
    void embed(xcb_window_t item);
    [[nodiscard]] bool showsPicture();

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    const xcb_screen_t* m_screen = nullptr;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_atom_t m_opcode = XCB_ATOM_NONE;
};

} // namespace kestrel::bench
