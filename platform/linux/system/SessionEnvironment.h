#pragma once

namespace kestrel {

// Sets environment variables that Qt and JACK read in this process. Variables that the user has set
// stay. Call it before a second thread exists.
void prepareEnvironment();

} // namespace kestrel
