#include "tools/pro-tools/macos/AppKitKeyReader.h"

#include "sets/NamedKey.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>

#include <chrono>

namespace kestrel {

namespace {
struct Flag {
    NSEventModifierFlags flag;
    std::uint16_t state; // the bit of the X11 mask
    std::uint16_t left; // key codes of the two modifier keys
    std::uint16_t right;
    const char* key;
};

constexpr Flag Flags[] = { { NSEventModifierFlagShift, 0x01, 56, 60, "Shift" },
    { NSEventModifierFlagControl, 0x04, 59, 62, "Control" },
    { NSEventModifierFlagOption, 0x08, 58, 61, "Option" },
    { NSEventModifierFlagCommand, 0x40, 55, 54, "Command" },
    { NSEventModifierFlagCapsLock, 0x02, 57, 57, "Lock" } };

const Flag* modifierKey(std::uint16_t code)
{
    for (const Flag& each : Flags) {
        if (code == each.left || code == each.right)
            return &each;
    }
    return nullptr;
}

std::string nameOf(std::uint16_t code)
{
    const Flag* modifier = modifierKey(code);
    return modifier ? modifier->key : NamedKey::nameOf(code).toStdString();
}

std::uint16_t stateOf(NSEventModifierFlags flags)
{
    std::uint16_t state = 0;
    for (const Flag& each : Flags) {
        if ((flags & each.flag) != 0)
            state = static_cast<std::uint16_t>(state | each.state);
    }
    return state;
}

std::int64_t monotonicMicroseconds()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

bool isDown(NSEvent* event)
{
    if (event.type != NSEventTypeFlagsChanged)
        return event.type == NSEventTypeKeyDown;
    const Flag* modifier = modifierKey(event.keyCode);
    return modifier && (event.modifierFlags & modifier->flag) != 0;
}
} // namespace

bool AppKitKeyReader::nativeEventFilter(const QByteArray& type, void* message, qintptr*)
{
    if (type != "mac_generic_NSEvent")
        return false;
    NSEvent* event = (__bridge NSEvent*)message;
    if (event.type != NSEventTypeKeyDown && event.type != NSEventTypeKeyUp
        && event.type != NSEventTypeFlagsChanged)
        return false;
    // A change of flags has no repeat flag; AppKit raises an exception when it is asked for it.
    const bool isRepeat = event.type == NSEventTypeKeyDown && event.isARepeat;
    char details[64];
    std::snprintf(details, sizeof details, "code=%d flags=0x%lx", int { event.keyCode },
        static_cast<unsigned long>(event.modifierFlags));
    m_received({ isDown(event), nameOf(event.keyCode), stateOf(event.modifierFlags), isRepeat,
        monotonicMicroseconds(), details });
    return false;
}

std::unique_ptr<QAbstractNativeEventFilter> makeKeyReader(KeyReceived received)
{
    return std::make_unique<AppKitKeyReader>(std::move(received));
}

bool setSecureInput(bool isOn)
{
    return (isOn ? EnableSecureEventInput() : DisableSecureEventInput()) == noErr;
}

} // namespace kestrel
