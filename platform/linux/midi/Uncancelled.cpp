#include "platform/linux/midi/Uncancelled.h"

#include <pthread.h>

namespace kestrel {

void callUncancelled(void (*function)(void* context), void* context)
{
    int before = PTHREAD_CANCEL_ENABLE;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before);
    function(context);
    pthread_setcancelstate(before, nullptr);
}

void cancelOnlyInWaits()
{
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr);
}

} // namespace kestrel
