#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::test {

template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

// The connection of another program to the X server.
class XClient {
public:
    explicit XClient(const std::string& display);

    [[nodiscard]] xcb_connection_t* xcb() const { return m_connection.get(); }
    [[nodiscard]] xcb_window_t root() const;

    // Returns when the server has handled all requests of this client.
    void synchronise() const;
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const;
    [[nodiscard]] std::vector<std::uint32_t> words(
        xcb_window_t window, std::string_view property) const;
    void setText(xcb_window_t window, xcb_atom_t property, std::string_view text) const;
    void setWords(xcb_window_t window, std::string_view property, xcb_atom_t type,
        const std::vector<std::uint32_t>& words) const;
    // Sends a client message about a window to the window manager.
    void tell(xcb_window_t window, std::string_view message,
        const std::vector<std::uint32_t>& data) const;

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
};

} // namespace kestrel::test
