#include "sets/ShortcutParser.h"

#include "assign/ModifierGlyphs.h"

#include <algorithm>

namespace kestrel {

namespace {

struct ModifierName {
    QStringView name;
    ModifierFlags flag;
};

constexpr ModifierName Words[] = {
    { u"Shift+", Modifier::Shift },
    { u"Control+", Modifier::Control },
    { u"Ctrl+", Modifier::Control },
    { u"Option+", Modifier::Option },
    { u"Alt+", Modifier::Option },
    { u"Command+", Modifier::Command },
    { u"Cmd+", Modifier::Command },
};

// Removes the modifier at the start of the text and returns it. Returns 0 if there is none.
ModifierFlags takeModifier(QString& text)
{
    for (const auto& [glyph, flag] : ModifierGlyphs) {
        if (text.startsWith(glyph)) {
            text.remove(0, glyph.size());
            if (text.startsWith(u'+'))
                text.remove(0, 1);
            return flag;
        }
    }
    for (const ModifierName& word : Words) {
        if (text.startsWith(word.name, Qt::CaseInsensitive)) {
            text.remove(0, word.name.size());
            return word.flag;
        }
    }
    return 0;
}

} // namespace

std::optional<TypedShortcut> TypedShortcut::parse(QString text)
{
    TypedShortcut shortcut;
    while (const ModifierFlags modifier = takeModifier(text))
        shortcut.modifiers |= modifier;
    const auto key = NamedKey::find(text.trimmed());
    if (!key)
        return std::nullopt;
    shortcut.key = *key;
    return shortcut;
}

void TypedShortcut::writeTo(ArchiveArray& entry, std::size_t record) const
{
    const std::size_t start = record * ShortcutRecordSize;
    entry.replace(start + ShortcutRecord::Modifiers, modifiers);
    entry.replace(start + ShortcutRecord::KeyCode, key.code);
    entry.replace(start + ShortcutRecord::Text, key.name);
    entry.replace(start + ShortcutRecord::Repeat, false);
}

QString modifierGlyphs(ModifierFlags modifiers)
{
    QString text;
    for (const auto& [glyph, flag] : ModifierGlyphs) {
        if (modifiers & flag)
            text += glyph;
    }
    return text;
}

bool startsWithModifierGlyph(QStringView text)
{
    return std::any_of(ModifierGlyphs.begin(), ModifierGlyphs.end(),
        [text](const ModifierGlyph& modifier) { return text.startsWith(modifier.glyph); });
}

QString shortcutText(ModifierFlags modifiers, const QString& keyName)
{
    const QString glyphs = modifierGlyphs(modifiers);
    return glyphs.isEmpty() ? keyName : glyphs + u'+' + keyName;
}

} // namespace kestrel
