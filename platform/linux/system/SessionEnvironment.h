#pragma once

namespace kestrel {

// Says in the environment how libraries are to behave in this process. What the user has set stays.
// Before there is a second thread.
void prepareEnvironment();

} // namespace kestrel
