#include "tools/selftest/macos/Quartz.h"

#include "platform/macos/CFHolder.h"

#include <ApplicationServices/ApplicationServices.h>

#include <thread>

namespace kestrel::selftest::Quartz {

namespace {
// Programs take in one event before the next is posted, as with a person.
constexpr std::chrono::milliseconds BetweenEvents { 60 };

constexpr CGEventFlags AnyModifier = kCGEventFlagMaskShift | kCGEventFlagMaskControl
    | kCGEventFlagMaskAlternate | kCGEventFlagMaskCommand;
constexpr CGKeyCode LastKeyCode = 127;

void post(const CFHolder<CGEventRef>& event)
{
    CGEventPost(kCGHIDEventTap, event.get());
    pause(BetweenEvents);
}

long numberIn(CFDictionaryRef window, CFStringRef key)
{
    long value = -1;
    const auto* number = static_cast<CFNumberRef>(CFDictionaryGetValue(window, key));
    if (number)
        CFNumberGetValue(number, kCFNumberLongType, &value);
    return value;
}
} // namespace

bool mayPost()
{
    return CGPreflightPostEventAccess();
}

bool isTrusted()
{
    return AXIsProcessTrusted();
}

bool mayRecord()
{
    return CGPreflightScreenCaptureAccess();
}

void click(double x, double y)
{
    const CGPoint place = CGPointMake(x, y);
    for (const CGEventType type :
        { kCGEventMouseMoved, kCGEventLeftMouseDown, kCGEventLeftMouseUp })
        post(CFHolder(CGEventCreateMouseEvent(nullptr, type, place, kCGMouseButtonLeft)));
}

void type(KeyCode key, ModifierFlags modifiers)
{
    for (const bool down : { true, false }) {
        const CFHolder event(CGEventCreateKeyboardEvent(nullptr, key, down));
        CGEventSetFlags(event.get(), CGEventFlags { modifiers });
        post(event);
    }
}

bool areAllKeysUp()
{
    constexpr auto State = kCGEventSourceStateCombinedSessionState;
    for (CGKeyCode key = 0; key <= LastKeyCode; ++key) {
        if (CGEventSourceKeyState(State, key))
            return false;
    }
    return (CGEventSourceFlagsState(State) & AnyModifier) == 0;
}

bool floats(pid_t process, long windowNumber)
{
    const CFHolder windows(
        CGWindowListCopyWindowInfo(kCGWindowListOptionOnScreenOnly, kCGNullWindowID));
    const CFIndex count = windows ? CFArrayGetCount(windows.get()) : 0;
    for (CFIndex i = 0; i < count; ++i) {
        const auto* window = static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(windows.get(), i));
        if (numberIn(window, kCGWindowOwnerPID) == process
            && numberIn(window, kCGWindowNumber) == windowNumber)
            return numberIn(window, kCGWindowLayer)
                == CGWindowLevelForKey(kCGFloatingWindowLevelKey);
    }
    return false;
}

void pause(std::chrono::milliseconds duration)
{
    std::this_thread::sleep_for(duration);
}

} // namespace kestrel::selftest::Quartz
