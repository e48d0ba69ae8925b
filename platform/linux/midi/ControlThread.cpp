#include "platform/linux/midi/ControlThread.h"

#include <pthread.h>
#include <signal.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace kestrel {

struct ControlThread::Task {
    Job work;
    Job undo;
    bool done = false;
    bool abandoned = false;
};

struct ControlThread::State {
    explicit State(Job whenCaughtUp)
        : caughtUp(std::move(whenCaughtUp))
    {
    }

    void push(const std::shared_ptr<Task>& task)
    {
        const std::lock_guard lock(mutex);
        tasks.push_back(task);
        changed.notify_all();
    }

    void run();

    const Job caughtUp;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Task>> tasks;
    int overdue = 0; // number of abandoned tasks that have not ended
    bool quitting = false;
    bool ended = false;
};

void ControlThread::State::run()
{
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return quitting || !tasks.empty(); });
        if (tasks.empty())
            break;
        const auto task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task->work();
        lock.lock();
        if (task->abandoned && task->undo) {
            lock.unlock();
            task->undo();
            lock.lock();
        }
        task->done = true;
        changed.notify_all();
        if (task->abandoned && --overdue == 0) {
            lock.unlock();
            caughtUp();
            lock.lock();
        }
    }
    ended = true;
    changed.notify_all();
}

ControlThread::ControlThread(std::chrono::milliseconds patience, Job caughtUp)
    : m_patience(patience)
    , m_state(std::make_shared<State>(std::move(caughtUp)))
{
    // The main thread handles the signals, so this thread blocks them. The threads that JACK starts
    // from here inherit the mask.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([state = m_state] { state->run(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_setname_np(m_thread.native_handle(), "midi-control");
}

ControlThread::~ControlThread()
{
    std::unique_lock lock(m_state->mutex);
    m_state->quitting = true;
    m_state->changed.notify_all();
    const auto patience = m_state->overdue > 0 ? std::chrono::milliseconds(0) : m_patience;
    const bool ended = m_state->changed.wait_for(lock, patience, [this] { return m_state->ended; });
    lock.unlock();
    if (ended)
        m_thread.join();
    else
        m_thread.detach();
}

bool ControlThread::call(Job work, Job undo)
{
    if (isBehind())
        return false;
    const auto task = std::make_shared<Task>(Task { std::move(work), std::move(undo) });
    m_state->push(task);
    return await(task);
}

void ControlThread::settle(Job work)
{
    const bool behind = isBehind();
    const auto task = std::make_shared<Task>(Task { std::move(work), {} });
    m_state->push(task);
    if (!behind)
        static_cast<void>(await(task));
}

void ControlThread::post(Job work)
{
    m_state->push(std::make_shared<Task>(Task { std::move(work), {} }));
}

bool ControlThread::isBehind() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->overdue > 0;
}

bool ControlThread::await(const std::shared_ptr<Task>& task)
{
    std::unique_lock lock(m_state->mutex);
    if (m_state->changed.wait_for(lock, m_patience, [&task] { return task->done; }))
        return true;
    task->abandoned = true;
    ++m_state->overdue;
    return false;
}

} // namespace kestrel
