#pragma once

#include "tools/assign-keys/NamedKey.h"

namespace kestrel {

// One keyboard shortcut as typed on a command line: "⌘S", "⌥+F5", "Command+Shift+Page Down".
struct TypedShortcut {
    ModifierFlags modifiers = 0;
    NamedKey key;

    // Missing when the text names no key or an unknown one.
    [[nodiscard]] static std::optional<TypedShortcut> parse(QString text);
};

// The text that a shortcut field shows for it.
[[nodiscard]] QString shortcutText(ModifierFlags modifiers, const QString& keyName);

} // namespace kestrel
