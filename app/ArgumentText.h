#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <string>

namespace kestrel {

// Finds another path, in UTF-8, to a file whose path is not in UTF-8.
using Utf8PathFinder = std::function<std::optional<std::string>(const char* path)>;

// The text of an argument as the system passes it. A URL of a file on this machine becomes the path
// of that file. QString cannot hold the path of a file that is not in UTF-8; it gets another path.
[[nodiscard]] QString textOfArgument(const QByteArray& argument, const Utf8PathFinder& utf8PathTo);

} // namespace kestrel
