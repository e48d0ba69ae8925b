#pragma once

#include "control/InstanceMessage.h"

namespace kestrel {

// Reads one message whose bytes arrive in pieces.
class InstanceMessageReader {
public:
    enum class State { Incomplete, Complete, Malformed };

    // Bytes behind the end of the message are ignored.
    State add(const QByteArray& bytes);

    // How many bytes of the message are still to come, as far as it is known: of the header, or
    // after that of the body. Bytes of the next message are not among them.
    [[nodiscard]] qsizetype missing() const;
    // Valid in the state Complete.
    [[nodiscard]] const InstanceMessage& message() const { return m_message; }
    // What is wrong, in the state Malformed.
    [[nodiscard]] const char* problem() const { return m_problem; }

private:
    [[nodiscard]] const char* problemOfHeader() const;
    [[nodiscard]] qsizetype length() const; // of the body; the header has arrived

    QByteArray m_bytes;
    InstanceMessage m_message;
    const char* m_problem = nullptr;
};

} // namespace kestrel
