#include "platform/macos/QuartzKeyTranslation.h"

#include "platform/macos/QuartzKeyEvents.h"

#import <AppKit/AppKit.h>

namespace kestrel {

namespace {

// Both Command keys to FN: they change the modifiers and nothing else.
constexpr bool isModifierKey(std::uint32_t keyCode)
{
    return keyCode >= 54 && keyCode <= 63;
}

// Asked of a fresh event with no modifier but Shift: the toolkit keeps only the characters that
// the other modifiers have changed.
std::string characters(KeyCode keyCode, ModifierFlags flags)
{
    const auto event = QuartzKeyEvents::event(
        keyCode, KeyEvents::Direction::Down, flags & Modifier::Shift, KeyEvents::AutoRepeat::No);
    if (!event)
        return {};
    NSString* text = [NSEvent eventWithCGEvent:event.get()].charactersIgnoringModifiers;
    const char* utf8 = text.UTF8String;
    return utf8 ? utf8 : "";
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
