#pragma once

#include "app/InstanceMessage.h"

namespace kestrel {

// Reads one message whose bytes arrive in pieces.
class InstanceMessageReader {
public:
    enum class State { Incomplete, Complete, Malformed };

    // Bytes behind the end of the message are ignored.
    State add(const QByteArray& bytes);

    // Valid in the state Complete.
    [[nodiscard]] const InstanceMessage& message() const { return m_message; }
    // What is wrong, in the state Malformed.
    [[nodiscard]] const char* problem() const { return m_problem; }

private:
    [[nodiscard]] const char* problemOfHeader() const;

    QByteArray m_bytes;
    InstanceMessage m_message;
    const char* m_problem = nullptr;
};

} // namespace kestrel
