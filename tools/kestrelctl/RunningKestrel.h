#pragma once

#include "control/InstanceMessage.h"

#include <QString>

#include <chrono>
#include <optional>
#include <string>

namespace kestrel::ctl {

// A connection to the running Kestrel. No wait for a first answer is longer than Patience.
class RunningKestrel {
public:
    enum class Outcome {
        Answered,
        NotRunning,
        NoAnswer, // in time
        Refused, // by the running program, or nobody can reach it
    };
    struct Reply {
        Outcome outcome = Outcome::NotRunning;
        InstanceMessage message; // of Answered
        std::string problem; // what else there is to say; a sentence
    };
    using Milliseconds = std::chrono::milliseconds;

    static constexpr Milliseconds Patience { 5000 };

    explicit RunningKestrel(QString socket, Milliseconds patience = Patience);
    ~RunningKestrel();
    RunningKestrel(const RunningKestrel&) = delete;
    RunningKestrel& operator=(const RunningKestrel&) = delete;

    // Connects and asks. Once for each object.
    [[nodiscard]] Reply ask(InstanceMessage::Kind request);
    // The next message after the answer. Waits for it without a limit. No value when the running
    // program has closed the connection.
    [[nodiscard]] std::optional<InstanceMessage> next();

private:
    using Deadline = std::optional<std::chrono::steady_clock::time_point>;

    [[nodiscard]] int connectUntil(const Deadline& deadline); // an errno value
    [[nodiscard]] bool send(const QByteArray& bytes, const Deadline& deadline) const;
    [[nodiscard]] std::optional<InstanceMessage> receive(const Deadline& deadline);
    [[nodiscard]] bool waitFor(short events, const Deadline& deadline) const;
    [[nodiscard]] Reply unanswered() const;

    QString m_socket;
    Milliseconds m_patience;
    int m_descriptor = -1;
    bool m_isLate = false; // the last wait has ended at its deadline
};

} // namespace kestrel::ctl
