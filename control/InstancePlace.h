#pragma once

#include <QString>

#include <string>

namespace kestrel {

// Where the running program of this user is found. Only this user can enter the folder.
// `session` is the session's folder; empty when there is none, and then there is no place either.
[[nodiscard]] QString instanceFolder(
    const std::string& session, const std::string& name = "kestrel");
[[nodiscard]] QString instanceSocket(const QString& folder);

} // namespace kestrel
