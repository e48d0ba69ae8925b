#pragma once

#include "platform/LoginItem.h"

namespace kestrel {

// Registers the bundle as a login item with SMAppService, which exists from macOS 13 on. On macOS
// 12 the user adds the program to the login items by hand.
class AppServiceLoginItem final : public LoginItem {
public:
    bool isAvailable() override;
    bool isEnabled() override;
    Result setEnabled(bool enabled) override;
    void showSettings() override;
};

} // namespace kestrel
