#pragma once

#include "platform/LoginItem.h"

namespace kestrel {

// The bundle as its own login item, as macOS 13 and later offer it. Before that there is no such
// service, and the user adds the program to the login items by hand.
class AppServiceLoginItem final : public LoginItem {
public:
    bool isAvailable() override;
    bool isEnabled() override;
    Result setEnabled(bool enabled) override;
    void showSettings() override;
};

} // namespace kestrel
