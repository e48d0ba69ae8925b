#pragma once

#include "platform/DefaultsStore.h"
#include "platform/macos/CFHolder.h"

namespace kestrel {

// The user defaults of one application. Values of another kind than data are as good as missing.
class CFPreferencesDefaultsStore final : public DefaultsStore {
public:
    // The domain of the running application is named by its bundle identifier.
    explicit CFPreferencesDefaultsStore(
        CFStringRef applicationID = kCFPreferencesCurrentApplication);

    std::optional<Bytes> data(std::string_view key) override;
    void setData(std::string_view key, std::span<const std::uint8_t> value) override;
    bool synchronise() override;

private:
    CFHolder<CFStringRef> m_applicationID;
};

} // namespace kestrel
