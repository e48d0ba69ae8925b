#pragma once

#include "platform/KeyCodes.h"

#include <QString>

#include <cstdint>
#include <optional>

// What keys are called in shortcut texts.
namespace kestrel::KeyNames {

// The name of a key that has one of its own; empty for all others.
[[nodiscard]] QString fixedName(KeyCode keyCode);

// The key of that name; missing when no key has it. Capital and small letters count alike.
[[nodiscard]] std::optional<KeyCode> keyOfFixedName(const QString& name);

// The key's own name, else what it types in upper case, else empty.
[[nodiscard]] QString keyName(KeyCode keyCode, const QString& charactersIgnoringModifiers);

// F1 to F20.
[[nodiscard]] bool isFunctionKey(std::uint64_t keyCode);

} // namespace kestrel::KeyNames
