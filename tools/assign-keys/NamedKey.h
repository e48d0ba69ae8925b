#pragma once

#include "platform/KeyCodes.h"

#include <QString>

#include <optional>

namespace kestrel {

// A key as it is named on a command line.
struct NamedKey {
    KeyCode code = 0;
    QString name; // as the shortcut fields show it

    // Capital and small letters count alike. Letters, digits and punctuation are those of an ANSI
    // keyboard. Missing when no key has that name.
    [[nodiscard]] static std::optional<NamedKey> find(const QString& name);
};

} // namespace kestrel
