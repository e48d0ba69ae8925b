#pragma once

namespace kestrel {

// Calls `function` with `context` and holds back the cancellation of the thread meanwhile.
void callUncancelled(void (*function)(void* context), void* context);

// For what runs on JACK's threads. jack_client_close() cancels them at whatever instruction they
// are, which would leave the heap or a mutex locked, or end the program inside a function that lets
// no exception pass. Here the cancellation waits until `function` is over. It takes effect before
// this returns, so the caller may have nothing to clean up.
template <typename Function> void uncancelled(Function function)
{
    callUncancelled([](void* context) { (*static_cast<Function*>(context))(); }, &function);
}

// From now on the calling thread is cancelled only where it waits, as POSIX lists it. This suits
// JACK's notification thread, which then leaves nothing of JACK's own locked either. The process
// thread must not call it: it waits for a futex, which is not in the list, and could not be
// cancelled any more.
void cancelOnlyInWaits();

} // namespace kestrel
