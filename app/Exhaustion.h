#pragma once

#include <optional>
#include <string>

// What to do when the system gives the program too little. An end at any moment loses nothing: the
// next start restores the live set and releases the keys that are down.
namespace kestrel::Exhaustion {

// Makes the process end with a sentence and exit code 1, not with an abort and a core dump, when
// memory, descriptors or threads run out, and when Qt cannot go on.
void endClearly();

// Raises the limit of open files where that is allowed. Returns a sentence for the user if the
// limits of the session leave too few open files or too little memory for an ordinary run.
[[nodiscard]] std::optional<std::string> problemAtStart();

} // namespace kestrel::Exhaustion
