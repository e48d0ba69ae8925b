#pragma once

#include "platform/Workspace.h"
#include "platform/macos/CFHolder.h"

namespace kestrel {

// The workspace of AppKit. NSWorkspace updates its list of applications in the main run loop.
class AppKitWorkspace final : public Workspace {
public:
    void visitActiveApplications(const Visitor& visit) override;
    bool openFile(std::string_view path) override;
    bool hideApplication() override;
    bool isApplicationHidden() const override;
    void activateApplication() override;
    void setReopened(std::function<void()> reopened) override;

private:
    CFHolder<CFTypeRef> m_reopening; // the event manager does not retain it
};

} // namespace kestrel
