#include "tools/kestrelctl/ActivityReader.h"

#include "tools/kestrelctl/Command.h"

#include <utility>

namespace kestrel::ctl {

ActivityReader::ActivityReader(QString socket)
    : m_kestrel(std::move(socket))
{
}

bool ActivityReader::begin()
{
    const auto reply = m_kestrel.ask(InstanceMessage::Kind::Follow);
    if (reply.outcome == RunningKestrel::Outcome::Answered)
        return true;
    complain(reply.problem);
    return false;
}

std::optional<QByteArray> ActivityReader::next()
{
    while (m_lines.isEmpty()) {
        auto message = m_kestrel.next();
        if (!message || message->kind != InstanceMessage::Kind::Events)
            return {};
        m_lines = std::move(message->body);
    }
    const qsizetype end = m_lines.indexOf('\n');
    const QByteArray line = m_lines.first(end < 0 ? m_lines.size() : end);
    m_lines = m_lines.sliced(end < 0 ? m_lines.size() : end + 1);
    return line;
}

} // namespace kestrel::ctl
