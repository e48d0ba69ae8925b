#pragma once

namespace kestrel {

// Calls `function` with `context` and holds back the cancellation of the thread meanwhile.
void callUncancelled(void (*function)(void* context), void* context);

// For what runs on JACK's threads. jack_client_close() cancels them at whatever instruction they
// are, which would leave the heap or a mutex locked, or end the program inside a function that lets
// no exception pass. Here the cancellation waits until `function` is over. On a thread that is
// cancelled at any instruction it then ends the thread before this returns, so the caller must hold
// nothing that it would have to release.
template <typename Function> void uncancelled(Function function)
{
    callUncancelled([](void* context) { (*static_cast<Function*>(context))(); }, &function);
}

// From now on the calling thread is cancelled only in calls that POSIX names cancellation points,
// such as read(). This suits JACK's notification thread, which is then rarely cancelled while it
// holds a lock of JACK: only in the close() with which it forgets another client. The process
// thread must not call it: it waits for a futex, which is no cancellation point, and could not be
// cancelled any more.
void cancelOnlyAtCancellationPoints();

} // namespace kestrel
