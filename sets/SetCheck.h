#pragma once

#include "platform/KeyCodes.h"
#include "sets/SetText.h"

#include <QString>

#include <functional>
#include <vector>

// Looks for what is wrong with a set, or probably not meant.
namespace kestrel::SetCheck {

enum class Kind {
    Damage, // missing tables, entries that are too short, values of other types
    Unused, // kept, but never typed
    Duplicate, // a shortcut of several keys
    NoShortcut, // a name without one
    UnknownKey // the keyboard has no such key, or it has another name
};

struct Finding {
    Kind kind = Kind::Damage;
    std::vector<ArchiveValue> keys; // of the console
    QString message;
};

// What the keyboard of the user is known to have.
struct Keyboard {
    std::function<bool(KeyCode)> hasKey;
    // What the key types in the layout that is in use, without and with Shift. Empty for a key that
    // the layout does not have. An empty function if no layout can be asked.
    std::function<QStringList(KeyCode)> characters;
};

[[nodiscard]] std::vector<Finding> findings(const SetText::Root& set, const Keyboard& keyboard);

[[nodiscard]] QString name(Kind kind); // "damage", "no-shortcut"
// The findings as JSON: {"findings": [{"kind", "keys", "message"}, …]}.
[[nodiscard]] QByteArray json(const std::vector<Finding>& findings);

} // namespace kestrel::SetCheck
