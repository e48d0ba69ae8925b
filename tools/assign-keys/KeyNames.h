#pragma once

#include "platform/KeyCodes.h"

#include <QString>

#include <optional>

// The keys that can be named on a command line, with the names that the shortcut fields show.
namespace kestrel::KeyNames {

struct Key {
    KeyCode code = 0;
    QString name;
};

// Letters, digits and punctuation are those of an ANSI keyboard. Capital or small alike.
[[nodiscard]] std::optional<Key> find(const QString& name);

} // namespace kestrel::KeyNames
