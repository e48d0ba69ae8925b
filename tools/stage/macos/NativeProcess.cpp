#include "tools/stage/NativeProcess.h"

#include <fcntl.h>
#include <unistd.h>

namespace kestrel::stage {

// macOS has no pipe2(), so only one thread of a program may start others.
bool makePrivatePipe(int (&ends)[2])
{
    if (::pipe(ends) != 0)
        return false;
    for (const int end : ends)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    return true;
}

// macOS does not couple the ends of processes. The object of a child ends it.
void endWithParent() { }

} // namespace kestrel::stage
