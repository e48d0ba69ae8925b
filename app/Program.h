#pragma once

#include "platform/Platform.h"

#include <functional>
#include <string>

namespace kestrel {

// The parts of the process that main() chooses.
struct ProgramParts {
    std::function<Platform(MainLoop&)> makePlatform;
    // The folder for the lock and the socket of the instance, in the folder of the session.
    // Programs with different folders do not know each other.
    std::string instanceFolder = "kestrel";
};

// Runs the program from the start of the process to its end. Returns the exit code. Needs a
// platform folder that is linked, because it calls its functions of platform/Platform.h.
[[nodiscard]] int runProgram(int argc, char* argv[], const ProgramParts& parts);

} // namespace kestrel
