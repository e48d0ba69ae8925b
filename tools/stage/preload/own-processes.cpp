// This library is preloaded into the programs of a studio. A program that opens /proc gets the
// studio's process table (OwnProcesses) instead.

#include <dirent.h>
#include <dlfcn.h>

#include <cstdlib>
#include <string_view>

extern "C" DIR* opendir(const char* name)
{
    using Opendir = DIR* (*)(const char*);
    static const auto next = reinterpret_cast<Opendir>(::dlsym(RTLD_NEXT, "opendir"));
    if (const char* folder = std::getenv("KESTREL_STAGE_PROCESSES");
        folder && name == std::string_view("/proc"))
        name = folder;
    return next(name);
}
