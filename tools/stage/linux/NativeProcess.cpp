#include "tools/stage/NativeProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>

namespace kestrel::stage {

bool makePrivatePipe(int (&ends)[2])
{
    return ::pipe2(ends, O_CLOEXEC) == 0;
}

void endWithParent()
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace kestrel::stage
