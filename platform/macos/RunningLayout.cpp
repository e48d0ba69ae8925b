#include "platform/RunningLayout.h"

// The layout is asked for on Linux only. On macOS that would need Carbon, which nothing else uses.
std::unique_ptr<kestrel::RunningLayout> kestrel::runningLayout()
{
    return nullptr;
}
