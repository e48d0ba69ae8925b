#pragma once

// What differs between systems when one process starts another.
namespace kestrel::stage {

// Makes a pipe whose ends no program inherits. False when that fails.
[[nodiscard]] bool makePrivatePipe(int (&ends)[2]);

// Called in a new child process: the system kills it with its parent, if the system can do that.
void endWithParent();

} // namespace kestrel::stage
