#pragma once

#include "platform/KeyCodes.h"

#include <QString>

#include <cstdint>
#include <optional>

// The names of keys in shortcut texts.
namespace kestrel::KeyNames {

// The name of a key whose name does not depend on the keyboard layout. Empty for all other keys.
[[nodiscard]] QString fixedName(KeyCode keyCode);

// The key with that name. No value when no key has it. Case does not matter.
[[nodiscard]] std::optional<KeyCode> keyOfFixedName(const QString& name);

// The fixed name of the key, else its characters in upper case, else empty.
[[nodiscard]] QString keyName(KeyCode keyCode, const QString& charactersIgnoringModifiers);

// F1 to F20.
[[nodiscard]] bool isFunctionKey(std::uint64_t keyCode);

} // namespace kestrel::KeyNames
