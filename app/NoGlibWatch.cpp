#include "app/DescriptorWatch.h"

namespace kestrel {

std::unique_ptr<MainLoop::Watch> watchThroughGlib(int, const std::function<void()>&)
{
    return nullptr;
}

} // namespace kestrel
