#pragma once

#include <CoreMIDI/CoreMIDI.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace kestrel::test {

// The thread on which CoreMIDI calls read procedures. A delivery that is under way stays so when
// its port is disposed of: nothing waits for it or takes it back.
class ReceiveThread {
public:
    struct Delivery {
        MIDIReadProc read;
        void* readProcRefCon;
        void* srcConnRefCon;
        std::vector<unsigned char> list; // the bytes of the packet list, no more
    };

    ReceiveThread() = default;
    ~ReceiveThread();
    ReceiveThread(const ReceiveThread&) = delete;
    ReceiveThread& operator=(const ReceiveThread&) = delete;

    // Any thread.
    void deliver(Delivery delivery);
    // While it holds, deliveries are under way, but have not reached their read procedures.
    void hold(bool hold);
    // Waits until nothing is under way. Must not be called while it holds.
    void finish();

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Delivery> m_deliveries;
    bool m_holding = false;
    bool m_delivering = false;
    bool m_ending = false;
    std::thread m_thread;
};

} // namespace kestrel::test
