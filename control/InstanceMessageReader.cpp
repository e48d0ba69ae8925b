#include "control/InstanceMessageReader.h"

#include <QtEndian>

namespace kestrel {

const char* InstanceMessageReader::problemOfHeader() const
{
    if (!m_bytes.startsWith("KSTL"))
        return "This is not a message to Kestrel.";
    if (m_bytes[4] != InstanceMessage::Version)
        return "The running Kestrel speaks version 1 of the protocol.";
    if (length() > InstanceMessage::MaxBodySize)
        return "The message is too long.";
    return nullptr;
}

qsizetype InstanceMessageReader::length() const
{
    return static_cast<qsizetype>(qFromBigEndian<quint32>(m_bytes.constData() + 6));
}

qsizetype InstanceMessageReader::missing() const
{
    constexpr qsizetype Header = InstanceMessage::HeaderSize;
    return (m_bytes.size() < Header ? Header : Header + length()) - m_bytes.size();
}

InstanceMessageReader::State InstanceMessageReader::add(const QByteArray& bytes)
{
    using Message = InstanceMessage;
    if (m_problem)
        return State::Malformed;
    m_bytes.append(bytes.first(
        std::min(bytes.size(), Message::HeaderSize + Message::MaxBodySize - m_bytes.size())));
    if (m_bytes.size() < Message::HeaderSize)
        return State::Incomplete;
    m_problem = problemOfHeader();
    if (m_problem)
        return State::Malformed;
    if (m_bytes.size() < Message::HeaderSize + length())
        return State::Incomplete;
    m_message
        = { static_cast<Message::Kind>(m_bytes[5]), m_bytes.sliced(Message::HeaderSize, length()) };
    return State::Complete;
}

} // namespace kestrel
