#include "shortcut/KeyPress.h"

#include "platform/KeyTranslation.h"

#include <QKeyEvent>

namespace kestrel {

namespace {
// A modifier alone makes no key press. Its native code is not reliable: for a change of modifiers
// on macOS, Qt may report the code 0, which is that of the A key.
bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_CapsLock:
        return true;
    default:
        return false;
    }
}
} // namespace

// Uses only native values: Qt's modifiers have Control and Command swapped on macOS.
std::optional<KeyPress> KeyPress::from(const QKeyEvent& event, KeyTranslation& translation)
{
    if (isModifier(event.key()))
        return std::nullopt;
    const QByteArray text = event.text().toUtf8();
    const auto key = translation.translate({ event.nativeScanCode(), event.nativeVirtualKey(),
        event.nativeModifiers(), { text.constData(), static_cast<std::size_t>(text.size()) } });
    if (!key)
        return std::nullopt;
    return KeyPress { key->keyCode, key->flags,
        QString::fromStdString(key->charactersIgnoringModifiers), event.isAutoRepeat() };
}

} // namespace kestrel
