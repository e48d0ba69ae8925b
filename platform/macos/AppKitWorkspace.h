#pragma once

#include "platform/Workspace.h"
#include "platform/macos/AppleEventHandler.h"

namespace kestrel {

// The workspace of AppKit. NSWorkspace updates its list of applications in the main run loop.
class AppKitWorkspace final : public Workspace {
public:
    AppKitWorkspace();

    void visitActiveApplications(const Visitor& visit) override;
    bool openFile(std::string_view path) override;
    bool hideApplication() override;
    bool isApplicationHidden() const override;
    void activateApplication() override;
    void setReopened(std::function<void()> reopened) override;
    void setQuitRequested(std::function<void()> quitRequested) override;

private:
    AppleEventHandler m_reopening;
    AppleEventHandler m_quitting;
};

} // namespace kestrel
