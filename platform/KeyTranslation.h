#pragma once

#include "platform/KeyCodes.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

// A pressed key in the numbers of the window system, as the toolkit passes them on.
struct NativeKeyEvent {
    std::uint32_t scanCode = 0;
    std::uint32_t virtualKey = 0;
    std::uint32_t modifiers = 0;
    std::string_view text; // UTF-8, what the key would type
};

// The same key as the macOS keyboard event has it.
struct TranslatedKey {
    KeyCode keyCode = 0;
    ModifierFlags flags = 0;
    std::string charactersIgnoringModifiers; // UTF-8, of the layout with only Shift honoured

    friend bool operator==(const TranslatedKey&, const TranslatedKey&) = default;
};

// What a pressed key is called on macOS.
class KeyTranslation {
public:
    virtual ~KeyTranslation() = default;

    // Missing for keys without a key code, and for modifier keys, which make no key event of
    // their own.
    [[nodiscard]] virtual std::optional<TranslatedKey> translate(const NativeKeyEvent& event) = 0;
};

} // namespace kestrel
