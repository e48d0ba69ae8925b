#pragma once

#include "tools/stage/ChildProcess.h"

#include <atomic>
#include <thread>

namespace kestrel::bench {

// Lets the console send events of all kinds at a steady rate, on a thread of its own, and counts
// what comes back: answers at the console and keys at the workstation.
class EventStream {
public:
    // Console and workstation outlive the stream; nobody else reads or writes them meanwhile.
    EventStream(
        stage::ChildProcess& console, stage::ChildProcess& workstation, int eventsPerSecond);
    ~EventStream();
    EventStream(const EventStream&) = delete;
    EventStream& operator=(const EventStream&) = delete;

    [[nodiscard]] long sent() const { return m_sent; }
    [[nodiscard]] long answers() const { return m_answers; }
    [[nodiscard]] long keys() const { return m_keys; }
    // True when one of the two programs has ended, and with it the stream.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    void run(const std::stop_token& stop);
    void takeIn();

    stage::ChildProcess& m_console;
    stage::ChildProcess& m_workstation;
    int m_eventsPerSecond;
    std::atomic<long> m_sent = 0;
    std::atomic<long> m_answers = 0;
    std::atomic<long> m_keys = 0;
    std::atomic<bool> m_hasFailed = false;
    std::jthread m_thread; // last, so that it ends first
};

} // namespace kestrel::bench
