#pragma once

#include <functional>
#include <memory>

namespace kestrel {

// The main thread's event loop, as the platform's adapters and the MIDI connection see it.
class MainLoop {
public:
    // Ends what it stands for when destroyed. Main thread only.
    class Watch {
    public:
        virtual ~Watch() = default;
    };

    virtual ~MainLoop() = default;

    // Runs `task` once on the main thread, never inside this call, in the order of the calls.
    // From any thread; never waits.
    virtual void perform(std::function<void()> task) = 0;

    // Calls `ready` on the main thread as long as `descriptor` is readable. What `ready` performs
    // runs right after it. Main thread only.
    [[nodiscard]] virtual std::unique_ptr<Watch> watch(int descriptor, std::function<void()> ready)
        = 0;
};

} // namespace kestrel
