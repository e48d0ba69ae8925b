#include "fuzz/Target.h"
#include "sets/ShortcutParser.h"

// A shortcut that is understood has a text of its own, which names the same shortcut.
std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    const auto typed = QString::fromUtf8(
        reinterpret_cast<const char*>(input.data()), static_cast<qsizetype>(input.size()));
    const auto shortcut = TypedShortcut::parse(typed);
    if (!shortcut)
        return {};
    if ((shortcut->modifiers & ~Modifier::Used) != 0 || shortcut->key.name.isEmpty())
        return "a shortcut with an unknown modifier or without a key";
    const QString text = shortcutText(shortcut->modifiers, shortcut->key.name);
    const auto again = TypedShortcut::parse(text);
    if (!again || again->modifiers != shortcut->modifiers || again->key.code != shortcut->key.code
        || again->key.name != shortcut->key.name)
        return "names another shortcut than what was typed: " + text.toStdString();
    return {};
}
