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
        Arrival* m_next = nullptr; // older while it waits, younger once it is in order
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
            newest->m_next = older;
        } while (!m_newest.compare_exchange_weak(
            older, newest, std::memory_order_release, std::memory_order_relaxed));
        return older == nullptr; // the arrival is the consumer's by now
    }

    // Consumer only. Gives everything that has arrived by now to `consume`, oldest first. `consume`
    // may drain the queue itself: then what is left for this call comes first there.
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
    Arrival* m_oldest = nullptr; // in order; the consumer's
};

} // namespace kestrel
