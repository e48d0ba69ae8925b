#include "tests/platform/macos/stand-ins/Preferences.h"

#include "tests/platform/macos/stand-ins/CFString.h"
#include "tests/platform/macos/stand-ins/Calls.h"

namespace kestrel::test {

Preferences& preferences()
{
    static Preferences preferences;
    return preferences;
}

} // namespace kestrel::test

using kestrel::CFHolder;
using kestrel::test::calls;
using kestrel::test::CFString;
using kestrel::test::preferences;

const CFStringRef kCFPreferencesCurrentApplication = CFSTR("kCFPreferencesCurrentApplication");

CFPropertyListRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef application)
{
    const std::pair name(CFString::textOf(application), CFString::textOf(key));
    for (const auto* values : { &preferences().pending, &preferences().onDisk }) {
        if (const auto found = values->find(name); found != values->end())
            return found->second ? CFRetain(found->second.get()) : nullptr;
    }
    return nullptr;
}

void CFPreferencesSetAppValue(CFStringRef key, CFPropertyListRef value, CFStringRef application)
{
    preferences().pending[{ CFString::textOf(application), CFString::textOf(key) }]
        = CFHolder<CFTypeRef>::retained(value);
}

Boolean CFPreferencesAppSynchronize(CFStringRef application)
{
    if (calls().fail("CFPreferencesAppSynchronize"))
        return false;
    auto& [pending, onDisk] = preferences();
    for (auto each = pending.begin(); each != pending.end();) {
        if (each->first.first != CFString::textOf(application)) {
            ++each;
            continue;
        }
        if (each->second)
            onDisk[each->first] = std::move(each->second);
        else
            onDisk.erase(each->first);
        each = pending.erase(each);
    }
    return true;
}
