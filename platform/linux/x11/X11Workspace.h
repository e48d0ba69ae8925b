#pragma once

#include "platform/Workspace.h"
#include "platform/linux/x11/X11Session.h"

#include <memory>
#include <vector>

namespace kestrel {

// The workspace as window managers and desktops offer it. Of the running applications it knows
// the front one.
class X11Workspace final : public Workspace {
public:
    explicit X11Workspace(std::shared_ptr<X11Session> session);

    void visitRunningApplications(const Visitor& visit) override;
    bool openFile(std::string_view path) override;

    bool hideApplication() override { return false; } // X11 knows windows only
    bool isApplicationHidden() const override { return false; }
    // Through the window manager; nothing happens when there is none, or no window of ours.
    void activateApplication() override;

    void setReopened(std::function<void()>) override { } // every start is a process of its own

private:
    [[nodiscard]] std::vector<xcb_window_t> ownWindows();
    void askWindowManager(
        xcb_window_t window, std::string_view message, std::uint32_t first, std::uint32_t second);

    std::shared_ptr<X11Session> m_session;
};

} // namespace kestrel
