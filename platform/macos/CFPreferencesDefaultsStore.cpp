#include "platform/macos/CFPreferencesDefaultsStore.h"

#include "platform/macos/CFText.h"

namespace kestrel {

CFPreferencesDefaultsStore::CFPreferencesDefaultsStore(CFStringRef applicationID)
    : m_applicationID(CFHolder<CFStringRef>::retained(applicationID))
{
}

std::optional<DefaultsStore::Bytes> CFPreferencesDefaultsStore::data(std::string_view key)
{
    const auto name = CFText::fromUtf8(key);
    if (!name)
        return std::nullopt;
    const CFHolder value(CFPreferencesCopyAppValue(name.get(), m_applicationID.get()));
    if (!value || CFGetTypeID(value.get()) != CFDataGetTypeID())
        return std::nullopt;
    const auto* bytes = static_cast<CFDataRef>(value.get());
    const UInt8* first = CFDataGetBytePtr(bytes);
    return Bytes(first, first + CFDataGetLength(bytes));
}

void CFPreferencesDefaultsStore::setData(std::string_view key, std::span<const std::uint8_t> value)
{
    const auto name = CFText::fromUtf8(key);
    const CFHolder bytes(
        CFDataCreate(kCFAllocatorDefault, value.data(), static_cast<CFIndex>(value.size())));
    if (!name || !bytes)
        return;
    keepAsideForeign(key);
    CFPreferencesSetAppValue(name.get(), bytes.get(), m_applicationID.get());
}

// Another program has written a value that is not data. It must not be lost unseen.
void CFPreferencesDefaultsStore::keepAsideForeign(std::string_view key)
{
    const auto name = CFText::fromUtf8(key);
    const auto aside = CFText::fromUtf8(std::string(key) + ".damaged");
    const CFHolder value(CFPreferencesCopyAppValue(name.get(), m_applicationID.get()));
    if (aside && value && CFGetTypeID(value.get()) != CFDataGetTypeID())
        CFPreferencesSetAppValue(aside.get(), value.get(), m_applicationID.get());
}

bool CFPreferencesDefaultsStore::synchronise()
{
    m_isFailing = !CFPreferencesAppSynchronize(m_applicationID.get());
    return !m_isFailing;
}

// CFPreferences gives no reason.
std::string CFPreferencesDefaultsStore::problem() const
{
    return m_isFailing ? "The system does not take them" : "";
}

} // namespace kestrel
