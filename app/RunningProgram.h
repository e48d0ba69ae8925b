#pragma once

#include "app/AppDelegate.h"
#include "app/FocusConnections.h"
#include "app/InstanceRequests.h"

namespace kestrel {

class FileOpenEvents;
class SingleInstance;

// The program from its launch to its end. Leads to the delegate what comes from outside: files that
// are opened, later starts, the end of the session and the end of the process. At most one object
// exists at a time. Main thread only.
class RunningProgram {
public:
    // All of them outlive the object. `instance` has claimed the place.
    struct Surroundings {
        MainLoop& mainLoop;
        const Clock& clock;
        SingleInstance& instance;
        FileOpenEvents& fileOpenEvents;
    };
    // Makes the process end after so many seconds if it has not ended by then.
    using SetDeadline = void (*)(unsigned seconds, int exitCode);

    RunningProgram(Platform& platform, const Surroundings& surroundings, SetDeadline setDeadline);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // Launches, opens the files and runs until the program is told to quit. Returns the exit code.
    [[nodiscard]] int run(const QStringList& files);
    // Ends the run as "Quit" in the menu does, and in bounded time.
    void terminate();

    [[nodiscard]] AppDelegate& delegate() { return m_delegate; }

private:
    static void endAtExit();
    void startAgain(const QStringList& files);

    Platform& m_platform;
    SingleInstance& m_instance;
    FileOpenEvents& m_fileOpenEvents;
    SetDeadline m_setDeadline;
    FocusConnections m_focusConnections;
    AppDelegate m_delegate;
    InstanceRequests m_requests;
};

} // namespace kestrel
