#include "shortcut/KeyPress.h"

#include "platform/KeyTranslation.h"

#include <QKeyEvent>

namespace kestrel {

// Only native numbers: the toolkit's own modifiers have Control and Command swapped on macOS.
std::optional<KeyPress> KeyPress::from(const QKeyEvent& event, KeyTranslation& translation)
{
    const QByteArray text = event.text().toUtf8();
    const auto key = translation.translate({ event.nativeScanCode(), event.nativeVirtualKey(),
        event.nativeModifiers(), { text.constData(), static_cast<std::size_t>(text.size()) } });
    if (!key)
        return std::nullopt;
    return KeyPress { key->keyCode, key->flags,
        QString::fromStdString(key->charactersIgnoringModifiers), event.isAutoRepeat() };
}

} // namespace kestrel
