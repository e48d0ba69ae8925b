#pragma once

#include "assign/ButtonEntry.h"
#include "sets/NamedKey.h"

namespace kestrel {

// A keyboard shortcut that is typed on a command line: "⌘S", "⌥+F5", "Command+Shift+Page Down".
struct TypedShortcut {
    ModifierFlags modifiers = 0;
    NamedKey key;

    // No value when the text names no key or an unknown one.
    [[nodiscard]] static std::optional<TypedShortcut> parse(QString text);

    // `record` counts from 0. The entry is long enough.
    void writeTo(ArchiveArray& entry, std::size_t record) const;
};

// The glyphs of the modifiers, in the order of shortcut texts: "⌥⌘". Other flags have none.
[[nodiscard]] QString modifierGlyphs(ModifierFlags modifiers);
[[nodiscard]] bool startsWithModifierGlyph(QStringView text);

// The text that a shortcut field shows for the shortcut.
[[nodiscard]] QString shortcutText(ModifierFlags modifiers, const QString& keyName);

} // namespace kestrel
