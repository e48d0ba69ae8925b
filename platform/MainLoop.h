#pragma once

#include <functional>
#include <memory>

namespace kestrel {

// The event loop of the main thread, for code that does not know Qt.
class MainLoop {
public:
    // Its destruction ends the watching. Main thread only.
    class Watch {
    public:
        virtual ~Watch() = default;
    };

    virtual ~MainLoop() = default;

    // Runs `task` once on the main thread, after this call has returned, in the order of the calls.
    // Any thread may call it; it never waits.
    virtual void perform(std::function<void()> task) = 0;

    // Calls `ready` on the main thread whenever `descriptor` is readable. Tasks that `ready`
    // performs run right after it. Main thread only.
    [[nodiscard]] virtual std::unique_ptr<Watch> watch(int descriptor, std::function<void()> ready)
        = 0;
};

} // namespace kestrel
