#pragma once

#include "platform/WindowTraits.h"
#include "platform/linux/x11/X11Session.h"

#include <cstdint>
#include <map>
#include <memory>

namespace kestrel {

// Sets window properties that window managers read. Qt writes the same properties when it shows or
// resizes a window, so this class remembers each trait and restores it whenever it has been lost.
class X11WindowTraits final : public WindowTraits, private X11Connection::Listener {
public:
    explicit X11WindowTraits(std::shared_ptr<X11Session> session);
    ~X11WindowTraits() override;

    void setContentAspectRatio(NativeWindow window, int width, int height) override;
    void setFloating(NativeWindow window) override;
    void setNeverFocused(NativeWindow window) override;
    void orderFront(NativeWindow) override { } // QWidget::raise() suffices
    bool isSizeGiven(NativeWindow window) override;

private:
    struct Traits {
        std::uint32_t aspectWidth = 0; // 0: any aspect
        std::uint32_t aspectHeight = 0;
        bool floating = false;
        bool neverFocused = false;
    };
    struct Atoms {
        xcb_atom_t wmProtocols, wmTakeFocus, netWmState, stateAbove, skipTaskbar, skipPager,
            netWmWindowType, typeUtility, maximisedWide, maximisedHigh;
    };

    void connectionOpened() override;
    void connectionLost() override;
    void eventArrived(const xcb_generic_event_t& event) override;
    void propertyChanged(xcb_window_t window, xcb_atom_t property, const Traits& traits);

    [[nodiscard]] Traits* traitsOf(NativeWindow window);
    void applyAspect(xcb_window_t window, const Traits& traits);
    void applyFloating(xcb_window_t window);
    void floatMapped(xcb_window_t window);
    void applyInputHint(xcb_window_t window);
    void refuseTakeFocus(xcb_window_t window);
    void replace(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
        const std::vector<std::uint32_t>& words);

    std::shared_ptr<X11Session> m_session;
    X11Connection& m_connection;
    Atoms m_atoms {};
    std::map<xcb_window_t, Traits> m_traits;
};

} // namespace kestrel
