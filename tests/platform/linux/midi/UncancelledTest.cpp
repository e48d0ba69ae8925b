#include "platform/linux/midi/Uncancelled.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <utility>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;

// A thread that is cancelled at any instruction, as those of JACK are.
class CancelledThread {
public:
    explicit CancelledThread(std::function<void()> body)
        : m_body(std::move(body))
    {
        pthread_create(&m_thread, nullptr, run, this);
    }
    void cancel() { pthread_cancel(m_thread); }
    void join() { pthread_join(m_thread, nullptr); }

private:
    static void* run(void* self)
    {
        pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
        static_cast<CancelledThread*>(self)->m_body();
        return nullptr;
    }

    std::function<void()> m_body;
    pthread_t m_thread {};
};

// Waits without a system call, so only a cancellation at any instruction can end it.
void spinUntil(const std::atomic<bool>& flag)
{
    while (!flag.load())
        ;
}

class Uncancelled : public testing::Test {
protected:
    void cancelOnceBegun(CancelledThread& thread)
    {
        spinUntil(hasBegun);
        thread.cancel();
        std::this_thread::sleep_for(50ms); // the cancellation would have arrived
        mayEnd = true;
    }

    std::atomic<bool> hasBegun { false };
    std::atomic<bool> mayEnd { false };
    std::atomic<bool> isOver { false };
    std::atomic<bool> wentOn { false };
};

TEST_F(Uncancelled, a_function_is_called_to_its_end_and_then_the_thread_is_cancelled)
{
    CancelledThread thread([this] {
        uncancelled([this] {
            hasBegun = true;
            spinUntil(mayEnd);
            pthread_testcancel();
            isOver = true;
        });
        wentOn = true;
    });
    cancelOnceBegun(thread);
    thread.join();
    EXPECT_TRUE(isOver);
    EXPECT_FALSE(wentOn);
}

TEST_F(Uncancelled, a_thread_that_is_cancelled_at_cancellation_points_goes_on_until_one)
{
    CancelledThread thread([this] {
        cancelOnlyAtCancellationPoints();
        hasBegun = true;
        spinUntil(mayEnd);
        isOver = true;
        ::sleep(10);
        wentOn = true;
    });
    cancelOnceBegun(thread);
    thread.join();
    EXPECT_TRUE(isOver);
    EXPECT_FALSE(wentOn);
}

} // namespace
} // namespace kestrel::test
