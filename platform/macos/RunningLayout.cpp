#include "platform/RunningLayout.h"

// A program without the connection to the window server that Carbon makes has no layout to ask.
std::unique_ptr<kestrel::RunningLayout> kestrel::runningLayout()
{
    return nullptr;
}
