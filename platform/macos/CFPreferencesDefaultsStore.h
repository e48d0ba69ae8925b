#pragma once

#include "platform/DefaultsStore.h"
#include "platform/macos/CFHolder.h"

namespace kestrel {

// The user defaults of one application. A value that is not data counts as missing. Before it is
// replaced, it is copied to its key with ".damaged" added.
class CFPreferencesDefaultsStore final : public DefaultsStore {
public:
    // `domain` is the bundle identifier of the running application.
    explicit CFPreferencesDefaultsStore(
        CFStringRef applicationID = kCFPreferencesCurrentApplication);

    std::optional<Bytes> data(std::string_view key) override;
    void setData(std::string_view key, std::span<const std::uint8_t> value) override;
    bool synchronise() override;
    std::string problem() const override;

private:
    void keepAsideForeign(std::string_view key);

    CFHolder<CFStringRef> m_applicationID;
    bool m_isFailing = false;
};

} // namespace kestrel
