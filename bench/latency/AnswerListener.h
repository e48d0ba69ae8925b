#pragma once

#include <jack/jack.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace kestrel::bench {

// A JACK client that runs after the candidate in the graph. It sees an answer in the same cycle in
// which the candidate gives it. The console runs before the candidate and sees the answer one cycle
// later.
class AnswerListener {
public:
    // Throws std::runtime_error when the server does not take the client or the connection.
    AnswerListener(const std::string& serverName, const std::string& answeringPort);

    [[nodiscard]] std::size_t answers() const { return m_answers; }
    [[nodiscard]] std::int64_t lastAnswerTime() const { return m_lastAnswerTime; }

private:
    static int process(jack_nframes_t frames, void* context);

    std::unique_ptr<jack_client_t, decltype(&jack_client_close)> m_client;
    jack_port_t* m_input = nullptr;
    std::atomic<std::size_t> m_answers { 0 };
    std::atomic<std::int64_t> m_lastAnswerTime { 0 };
};

} // namespace kestrel::bench
