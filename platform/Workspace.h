#pragma once

#include <functional>
#include <string_view>

namespace kestrel {

struct RunningApplication {
    std::string_view localizedName; // UTF-8; valid during the visit
    bool active = false; // frontmost
};

// The user's workspace. Main thread only.
class Workspace {
public:
    using Visitor = std::function<bool(const RunningApplication&)>; // returns false to stop

    virtual ~Workspace() = default;

    // In the workspace's own order, as current as the events are.
    virtual void visitRunningApplications(const Visitor& visit) = 0;

    // Opens a file or bundle as the file manager would. False when that cannot even be started.
    [[nodiscard]] virtual bool openFile(std::string_view path) = 0;

    // False on systems without hidden applications. Then the caller hides its windows itself.
    [[nodiscard]] virtual bool hideApplication() = 0;
    [[nodiscard]] virtual bool isApplicationHidden() const = 0;
    virtual void activateApplication() = 0; // ignoring other applications

    // The system calls `reopened` when the user starts this application again and the system starts
    // no second process for it. An empty function ends that.
    virtual void setReopened(std::function<void()> reopened) = 0;
};

} // namespace kestrel
