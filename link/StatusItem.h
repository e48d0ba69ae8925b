#pragma once

#include <string_view>

namespace kestrel {

// The resource names of the two images.
namespace StatusImage {
inline constexpr std::string_view Online = "kestrel_online_16x16";
inline constexpr std::string_view Offline = "kestrel_offline_16x16";
} // namespace StatusImage

// The item in the status bar that shows whether the console link is alive. Main thread only.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    virtual void setImage(std::string_view imageName) = 0; // a resource name
};

} // namespace kestrel
