#pragma once

#include <string_view>

namespace kestrel {

// The item in the status bar that shows whether the console link is alive. Main thread only.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    virtual void setImage(std::string_view imageName) = 0; // a resource name
};

} // namespace kestrel
