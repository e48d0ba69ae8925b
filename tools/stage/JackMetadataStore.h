#pragma once

#include <filesystem>

namespace kestrel::stage {

// JACK's clients share a database of metadata, one for each user. A client that is killed at the
// wrong moment leaves it locked, and from then on no client of this user can be opened, not even on
// a new server.

// Removes the database unless a process uses it.
void removeUnusedJackMetadata();

[[nodiscard]] std::filesystem::path jackMetadataFolder();

} // namespace kestrel::stage
