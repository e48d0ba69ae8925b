#pragma once

#include <functional>
#include <string_view>

namespace kestrel {

struct RunningApplication {
    std::string_view localizedName; // UTF-8, valid during the visit
    bool active = false; // frontmost
};

// The user's workspace. Main thread only.
class Workspace {
public:
    using Visitor = std::function<bool(const RunningApplication&)>; // false ends the walk

    virtual ~Workspace() = default;

    // In the workspace's own order, as current as the events are.
    virtual void visitRunningApplications(const Visitor& visit) = 0;

    // Opens a file or bundle as the file manager would; false when nothing could be asked to.
    [[nodiscard]] virtual bool openFile(std::string_view path) = 0;

    // False where the session knows no hidden applications: the caller hides its windows itself.
    [[nodiscard]] virtual bool hideApplication() = 0;
    [[nodiscard]] virtual bool isApplicationHidden() const = 0;
    virtual void activateApplication() = 0; // ignoring other applications

    // `reopened` is called when the user starts this application while it runs, in sessions that
    // then start no second process; an empty one ends that.
    virtual void setReopened(std::function<void()> reopened) = 0;
};

} // namespace kestrel
