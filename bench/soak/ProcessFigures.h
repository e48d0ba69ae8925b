#pragma once

#include <sys/types.h>

#include <string>

namespace kestrel::bench {

// What a process holds at one moment.
struct ProcessFigures {
    // Memory that only this process can have written. Pages of libraries are left out: they count
    // as private as soon as no other program happens to use the library.
    double writtenKibibytes = 0;
    double descriptors = 0;
    double threads = 0;

    // Zeros when the process has gone.
    [[nodiscard]] static ProcessFigures of(pid_t process);
    // The median of each figure over two seconds, because work that is under way holds some.
    [[nodiscard]] static ProcessFigures atRest(pid_t process);
};

} // namespace kestrel::bench
