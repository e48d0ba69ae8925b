#pragma once

#include "platform/Workspace.h"
#include "platform/linux/x11/X11Session.h"

#include <memory>
#include <vector>

namespace kestrel {

// The workspace on X11, through the window manager and xdg-open. It knows only one running
// application, the one in front.
class X11Workspace final : public Workspace {
public:
    explicit X11Workspace(std::shared_ptr<X11Session> session);

    void visitActiveApplications(const Visitor& visit) override;
    bool openFile(std::string_view path) override;

    bool hideApplication() override { return false; } // X11 cannot hide an application
    bool isApplicationHidden() const override { return false; }
    // Asks the window manager. Nothing happens without a window manager or without a window of
    // ours.
    void activateApplication() override;

    void setReopened(std::function<void()>) override { } // each start is a new process
    void setQuitRequested(std::function<void()>) override { } // signals and the session manager ask

private:
    [[nodiscard]] std::vector<xcb_window_t> ownWindows();
    void askWindowManager(
        xcb_window_t window, std::string_view message, std::uint32_t first, std::uint32_t second);

    std::shared_ptr<X11Session> m_session;
};

} // namespace kestrel
