#include "tests/platform/macos/stand-ins/ReceiveThread.h"

#include <utility>

namespace kestrel::test {

ReceiveThread::~ReceiveThread()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_ending = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable())
        m_thread.join();
}

void ReceiveThread::deliver(Delivery delivery)
{
    const std::scoped_lock lock(m_mutex);
    m_deliveries.push_back(std::move(delivery));
    if (!m_thread.joinable())
        m_thread = std::thread([this] { run(); });
    m_changed.notify_all();
}

void ReceiveThread::hold(bool hold)
{
    const std::scoped_lock lock(m_mutex);
    m_holding = hold;
    m_changed.notify_all();
}

void ReceiveThread::finish()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_deliveries.empty() && !m_delivering; });
}

void ReceiveThread::run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_ending || (!m_holding && !m_deliveries.empty()); });
        if (m_ending)
            return;
        m_delivering = true;
        {
            // The list goes when its delivery has ended.
            const Delivery delivery = std::move(m_deliveries.front());
            m_deliveries.pop_front();
            lock.unlock();
            delivery.read(reinterpret_cast<const MIDIPacketList*>(delivery.list.data()),
                delivery.readProcRefCon, delivery.srcConnRefCon);
        }
        lock.lock();
        m_delivering = false;
        m_changed.notify_all();
    }
}

} // namespace kestrel::test
