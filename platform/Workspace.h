#pragma once

#include <functional>
#include <string_view>

namespace kestrel {

// The user's workspace. Main thread only.
class Workspace {
public:
    // Gets the localized name of an application, in UTF-8 and valid during the visit. Returns false
    // to stop.
    using Visitor = std::function<bool(std::string_view localizedName)>;

    virtual ~Workspace() = default;

    // Visits the running applications that are active (frontmost), in the workspace's own order,
    // as current as the events are.
    virtual void visitActiveApplications(const Visitor& visit) = 0;

    // Opens a file or bundle as the file manager would. False when that cannot even be started.
    [[nodiscard]] virtual bool openFile(std::string_view path) = 0;

    // False on systems without hidden applications. Then the caller hides its windows itself.
    [[nodiscard]] virtual bool hideApplication() = 0;
    [[nodiscard]] virtual bool isApplicationHidden() const = 0;
    virtual void activateApplication() = 0; // ignoring other applications

    // The system calls `reopened` when the user starts this application again and the system starts
    // no second process for it. An empty function ends that.
    virtual void setReopened(std::function<void()> reopened) = 0;

    // The system calls `quitRequested` when it asks this application to end, at log-out for
    // example. It is not called by systems that ask with a signal or through the session manager.
    // An empty function ends that.
    virtual void setQuitRequested(std::function<void()> quitRequested) = 0;
};

} // namespace kestrel
