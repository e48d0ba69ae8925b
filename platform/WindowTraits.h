#pragma once

#include <cstdint>

namespace kestrel {

// The native handle of a window: an NSView on macOS, a window ID on X11.
using NativeWindow = std::uintptr_t;

// Properties of native windows that Qt cannot set. Main thread only.
class WindowTraits {
public:
    virtual ~WindowTraits() = default;

    // Keeps the content at width : height while the window is resized by any edge or corner.
    virtual void setContentAspectRatio(NativeWindow window, int width, int height) = 0;

    // The window floats, shows over full-screen spaces, and stays when the application is inactive
    // or hidden.
    virtual void setFloating(NativeWindow window) = 0;

    // The window never takes the keyboard focus, wherever it is clicked.
    virtual void setNeverFocused(NativeWindow window) = 0;

    // Puts a window that is shown before all others of its level, also while another application
    // is active, which QWidget::raise() does not do on every system.
    virtual void orderFront(NativeWindow window) = 0;

    // True while the window system gives the window its size in a way that Qt does not tell, such
    // as a window that is maximised in one direction only. May wait for the window system.
    [[nodiscard]] virtual bool isSizeGiven(NativeWindow window) = 0;
};

} // namespace kestrel
