#pragma once

#include "platform/KeyCodes.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

// A key press with the native numbers of the window system, as QKeyEvent carries them.
struct NativeKeyEvent {
    std::uint32_t scanCode = 0;
    std::uint32_t virtualKey = 0;
    std::uint32_t modifiers = 0;
    std::string_view text; // UTF-8, the text that the key types
};

// The same key press as a macOS keyboard event describes it.
struct TranslatedKey {
    KeyCode keyCode = 0;
    ModifierFlags flags = 0;
    std::string charactersIgnoringModifiers; // UTF-8; of the modifiers only Shift counts

    friend bool operator==(const TranslatedKey&, const TranslatedKey&) = default;
};

// What the keyboards of the platform call Option and Command.
enum class ModifierNames { OptionCommand, AltSuper };

// Translates native key presses into those of macOS.
class KeyTranslation {
public:
    virtual ~KeyTranslation() = default;

    // No value for a key without a key code, and for a modifier key: on macOS a modifier key alone
    // makes no key event.
    [[nodiscard]] virtual std::optional<TranslatedKey> translate(const NativeKeyEvent& event) = 0;

    [[nodiscard]] virtual ModifierNames modifierNames() const = 0;
};

} // namespace kestrel
