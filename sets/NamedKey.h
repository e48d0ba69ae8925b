#pragma once

#include "platform/KeyCodes.h"

#include <QString>

#include <optional>

namespace kestrel {

// A key that is given by its name on a command line.
struct NamedKey {
    KeyCode code = 0;
    QString name; // the name in a shortcut field

    // Case does not matter. Letters, digits and punctuation are those of an ANSI keyboard. No value
    // when no key has that name.
    [[nodiscard]] static std::optional<NamedKey> find(const QString& name);
    // "key 123" for a code without a name.
    [[nodiscard]] static QString nameOf(KeyCode code);
};

} // namespace kestrel
