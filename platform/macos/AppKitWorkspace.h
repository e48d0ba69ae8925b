#pragma once

#include "platform/Workspace.h"
#include "platform/macos/CFHolder.h"

namespace kestrel {

// The workspace as AppKit keeps it, brought up to date by the main run loop.
class AppKitWorkspace final : public Workspace {
public:
    void visitRunningApplications(const Visitor& visit) override;
    bool openFile(std::string_view path) override;
    bool hideApplication() override;
    bool isApplicationHidden() const override;
    void activateApplication() override;
    void setReopened(std::function<void()> reopened) override;

private:
    CFHolder<CFTypeRef> m_reopening; // which the event manager does not retain
};

} // namespace kestrel
