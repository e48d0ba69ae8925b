#include "platform/linux/midi/Uncancelled.h"

#include <pthread.h>

namespace kestrel {

// Some versions of glibc act on a cancellation that was sent just before the thread held it back,
// unless its type is deferred.
void callUncancelled(void (*function)(void* context), void* context)
{
    int type = PTHREAD_CANCEL_DEFERRED;
    int state = PTHREAD_CANCEL_ENABLE;
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &type);
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
    function(context);
    pthread_setcancelstate(state, nullptr);
    pthread_setcanceltype(type, nullptr);
}

void cancelOnlyAtCancellationPoints()
{
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr);
}

} // namespace kestrel
