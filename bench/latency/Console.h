#pragma once

#include "bench/latency/Buttons.h"

#include <jack/jack.h>

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::bench {

// The console on JACK: the client ZENTA with five pairs of ports, of which the fifth carries the
// traffic. The process callback writes the packets and takes their times. Only one thread calls
// these functions.
class Console {
public:
    static constexpr std::size_t MostStreamStrokes = 1'000'000;

    // Throws std::runtime_error when the server does not take the client.
    explicit Console(const std::string& serverName);

    // The packets go with the next cycle. The function does not wait for it, so that the caller can
    // wait for the key event itself: to be woken twice would delay what is measured.
    void send(const Stroke& stroke, PressForm form);
    // sentAt() and sendHeartbeat() return when the packets are in the port buffer. The result is
    // the time at which they got there (monotonic, ns). They throw std::runtime_error when no cycle
    // comes within two seconds.
    std::int64_t sentAt();
    std::int64_t sendHeartbeat();

    // Sends so many display packets a second, before all other packets of their cycle. 0 ends it.
    void setFlood(int packetsPerSecond) { m_floodPerSecond = packetsPerSecond; }

    // Sends a heartbeat each second, as a console that is switched on does. It comes after all
    // other packets of its cycle.
    void setHeartbeatEachSecond(bool on) { m_heartbeatEachSecond = on; }

    // Starts the steady stream: `strokes` strokes, evenly spaced. The stream does not wait for the
    // key events.
    void startStream(std::size_t strokes, int strokesPerSecond);
    void stopStream() { m_streamLength = 0; }
    [[nodiscard]] std::size_t streamSent() const { return m_streamSent; }
    [[nodiscard]] std::int64_t streamTime(std::size_t n) const { return m_streamTimes[n]; }

    [[nodiscard]] std::size_t answers() const { return m_answers; }
    [[nodiscard]] std::int64_t lastAnswerTime() const { return m_lastAnswerTime; }
    [[nodiscard]] std::size_t cycles() const { return m_cycles; }
    [[nodiscard]] std::size_t overruns() const { return m_overruns; }

    // Connects a reference program's ports in both directions.
    void connectReference(const std::string& clientName);
    // The name of the port that answers come from. Empty when none is connected.
    [[nodiscard]] std::string answeringPort() const;

private:
    enum class Order : std::uint32_t {
        None,
        TwoPackets = 0x100,
        OnePacket = 0x200,
        Heartbeat = 0x300
    };

    static int process(jack_nframes_t frames, void* context);
    void readAnswers(void* input);
    void writeFlood(void* output, jack_nframes_t frames);
    void writeStream(void* output, jack_nframes_t frames);
    void writeOrder(void* output);
    void writeHeartbeat(void* output, jack_nframes_t frames);
    void give(Order order, std::uint8_t code = 0);

    std::array<jack_port_t*, 5> m_outputs {};
    std::array<jack_port_t*, 5> m_inputs {};

    std::atomic<std::uint32_t> m_order { 0 }; // an Order and, in the low byte, a button code
    std::atomic<std::int64_t> m_orderTime { 0 };
    std::atomic<int> m_floodPerSecond { 0 };
    std::int64_t m_floodDue = 0; // in packets times frames per second
    std::uint32_t m_floodCount = 0;

    std::atomic<bool> m_heartbeatEachSecond { false };
    std::int64_t m_heartbeatDue = 0; // frames since the last heartbeat

    std::atomic<std::size_t> m_streamLength { 0 };
    std::atomic<std::size_t> m_streamSent { 0 };
    std::atomic<int> m_streamPerSecond { 0 };
    std::int64_t m_streamDue = 0; // in strokes times frames per second
    std::vector<std::int64_t> m_streamTimes;

    std::atomic<std::size_t> m_answers { 0 };
    std::atomic<std::int64_t> m_lastAnswerTime { 0 };
    std::atomic<std::size_t> m_cycles { 0 };
    std::atomic<std::size_t> m_overruns { 0 };

    // The last member, so that the process callback ends before the members that it uses are
    // destroyed.
    std::unique_ptr<jack_client_t, decltype(&jack_client_close)> m_client;
};

} // namespace kestrel::bench
