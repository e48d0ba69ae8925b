#pragma once

// Ends the process at a time, whatever the main thread does then. Qt waits without limit for an X
// server that has stopped. The alarm clock of the process (SIGALRM) counts the time, so no thread
// and no memory is needed.
namespace kestrel::EndDeadline {

// Safe in a signal handler. Replaces an earlier deadline.
void set(unsigned seconds, int exitCode);
// Safe in a signal handler.
[[nodiscard]] bool isSet();
// Only after set().
void cancel();

} // namespace kestrel::EndDeadline
