#pragma once

#include <QString>

#include <optional>

namespace kestrel {

// Makes sure that `path` is a folder which only this user can enter, and creates it if it is
// missing. Returns a sentence on what went wrong, without its full stop.
[[nodiscard]] std::optional<QString> makePrivateFolder(const QString& path);

} // namespace kestrel
