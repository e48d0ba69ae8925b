#pragma once

#include <atomic>
#include <memory>
#include <utility>

namespace kestrel {

// Hands objects from any thread to one consumer, in order, without a lock. Each object takes one
// allocation, which its producer makes.
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
        Arrival* m_next = nullptr; // the older arrival before takeArrived(), then the younger
    };

    ArrivalQueue() = default;
    ~ArrivalQueue()
    {
        drain([](T&) {});
    }
    ArrivalQueue(const ArrivalQueue&) = delete;
    ArrivalQueue& operator=(const ArrivalQueue&) = delete;

    // May be called on any thread. True when the queue was empty: the consumer must then be woken.
    [[nodiscard]] bool push(std::unique_ptr<Arrival> arrival)
    {
        Arrival* const newest = arrival.release();
        Arrival* older = m_newest.load(std::memory_order_relaxed);
        do {
            newest->m_next = older;
        } while (!m_newest.compare_exchange_weak(
            older, newest, std::memory_order_release, std::memory_order_relaxed));
        return older == nullptr; // the consumer may own the arrival by now
    }

    // The consumer's thread only. Passes everything that has arrived so far to `consume`, oldest
    // first. `consume` may call drain() itself: the inner call begins with what the outer call has
    // not passed on.
    template <typename Consumer> void drain(Consumer&& consume)
    {
        takeArrived();
        while (m_oldest) {
            const std::unique_ptr<Arrival> arrival(m_oldest);
            m_oldest = arrival->m_next;
            consume(arrival->value);
        }
    }

private:
    void takeArrived()
    {
        Arrival* oldest = nullptr;
        for (Arrival* each = m_newest.exchange(nullptr, std::memory_order_acquire); each;)
            oldest = std::exchange(each, std::exchange(each->m_next, oldest));
        Arrival** end = &m_oldest;
        while (*end)
            end = &(*end)->m_next;
        *end = oldest;
    }

    std::atomic<Arrival*> m_newest { nullptr };
    Arrival* m_oldest = nullptr; // oldest first; only the consumer uses it
};

} // namespace kestrel
