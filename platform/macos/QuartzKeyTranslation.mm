#include "platform/macos/QuartzKeyTranslation.h"

#include "platform/macos/QuartzKeyEvents.h"

#import <AppKit/AppKit.h>

namespace kestrel {

namespace {

// The key codes from Command to Fn: these keys only change the modifiers.
constexpr bool isModifierKey(std::uint32_t keyCode)
{
    return keyCode >= 54 && keyCode <= 63;
}

std::string characters(const NSEvent* event)
{
    const char* utf8 = event.charactersIgnoringModifiers.UTF8String;
    return utf8 ? utf8 : "";
}

// Asks the NSEvent that is being handled, which knows its keyboard: QKeyEvent has only the
// characters that the modifiers have changed. If there is no such event, a new one with Shift alone
// is asked.
std::string characters(KeyCode keyCode, ModifierFlags flags)
{
    const NSEvent* current = NSApp.currentEvent;
    if (current.type == NSEventTypeKeyDown && current.keyCode == keyCode)
        return characters(current);
    const auto event = QuartzKeyEvents::event(
        keyCode, KeyEvents::Direction::Down, flags & Modifier::Shift, KeyEvents::AutoRepeat::No);
    if (!event)
        return {};
    return characters([NSEvent eventWithCGEvent:event.get()]);
}

} // namespace

std::optional<TranslatedKey> QuartzKeyTranslation::translate(const NativeKeyEvent& event)
{
    constexpr std::uint32_t LargestCode = 0xFFFF;
    if (event.virtualKey > LargestCode || isModifierKey(event.virtualKey))
        return std::nullopt;
    const auto keyCode = static_cast<KeyCode>(event.virtualKey);
    return TranslatedKey { keyCode, event.modifiers, characters(keyCode, event.modifiers) };
}

} // namespace kestrel
