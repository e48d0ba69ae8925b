#pragma once

#include "platform/MainLoop.h"

namespace kestrel {

// A main loop that never turns, for a look at the system that needs no events.
class IdleLoop final : public MainLoop {
public:
    void perform(std::function<void()>) override { }
    [[nodiscard]] std::unique_ptr<Watch> watch(int, std::function<void()>) override
    {
        return std::make_unique<Watch>();
    }
};

} // namespace kestrel
