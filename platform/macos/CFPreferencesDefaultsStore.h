#pragma once

#include "platform/DefaultsStore.h"
#include "platform/macos/CFHolder.h"

namespace kestrel {

// The user defaults of one application. A value of another kind than data is as good as missing; it
// is kept aside under its key and ".damaged" when it is replaced.
class CFPreferencesDefaultsStore final : public DefaultsStore {
public:
    // The domain of the running application is named by its bundle identifier.
    explicit CFPreferencesDefaultsStore(
        CFStringRef applicationID = kCFPreferencesCurrentApplication);

    std::optional<Bytes> data(std::string_view key) override;
    void setData(std::string_view key, std::span<const std::uint8_t> value) override;
    bool synchronise() override;

private:
    void keepAsideForeign(std::string_view key);

    CFHolder<CFStringRef> m_applicationID;
};

} // namespace kestrel
