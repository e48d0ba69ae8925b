#pragma once

#include <atomic>
#include <memory>
#include <utility>

namespace kestrel {

// Hands objects from any thread to one consumer, in order, without a lock. An object costs one
// allocation, made by its producer.
template <typename T> class ArrivalQueue {
public:
    class Arrival {
    public:
        template <typename... Arguments>
        explicit Arrival(Arguments&&... arguments)
            : value(std::forward<Arguments>(arguments)...)
        {
        }

        T value;

    private:
        friend class ArrivalQueue;
        Arrival* m_older = nullptr;
    };

    ArrivalQueue() = default;
    ~ArrivalQueue()
    {
        drain([](T&) {});
    }
    ArrivalQueue(const ArrivalQueue&) = delete;
    ArrivalQueue& operator=(const ArrivalQueue&) = delete;

    // From any thread. True when the queue was empty, that is, when the consumer must be woken.
    [[nodiscard]] bool push(std::unique_ptr<Arrival> arrival)
    {
        Arrival* const newest = arrival.release();
        Arrival* older = m_newest.load(std::memory_order_relaxed);
        do {
            newest->m_older = older;
        } while (!m_newest.compare_exchange_weak(
            older, newest, std::memory_order_release, std::memory_order_relaxed));
        return older == nullptr; // the arrival is the consumer's by now
    }

    // Consumer only. Gives everything that has arrived by now to `consume`, oldest first.
    template <typename Consumer> void drain(Consumer&& consume)
    {
        Arrival* oldest = nullptr;
        for (Arrival* each = m_newest.exchange(nullptr, std::memory_order_acquire); each;)
            oldest = std::exchange(each, std::exchange(each->m_older, oldest));
        while (oldest) {
            const std::unique_ptr<Arrival> arrival(oldest);
            oldest = arrival->m_older;
            consume(arrival->value);
        }
    }

private:
    std::atomic<Arrival*> m_newest { nullptr };
};

} // namespace kestrel
