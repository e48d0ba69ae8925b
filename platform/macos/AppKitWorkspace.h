#pragma once

#include "platform/Workspace.h"

namespace kestrel {

// The workspace as AppKit keeps it, brought up to date by the main run loop.
class AppKitWorkspace final : public Workspace {
public:
    void visitRunningApplications(const Visitor& visit) override;
    bool openFile(std::string_view path) override;
    bool hideApplication() override;
    bool isApplicationHidden() const override;
    void activateApplication() override;
};

} // namespace kestrel
