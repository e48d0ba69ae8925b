#include "fuzz/held-keys/ModelServer.h"

namespace kestrel::fuzz {

void ModelServer::handle(std::size_t count)
{
    for (; count > 0 && !m_unread.empty(); --count) {
        const Request request = m_unread.front();
        m_unread.pop_front();
        m_down.set(request.step.key, request.step.direction == KeyEvents::Direction::Down);
        m_foreign.reset(request.step.key);
        m_lastHandled = request.number;
    }
}

void ModelServer::restart()
{
    *this = {};
}

void ModelServer::pressForAnother(XKeyCode key)
{
    if (m_down.test(key))
        return;
    m_down.set(key);
    m_foreign.set(key);
}

void ModelServer::releaseForAnother(XKeyCode key)
{
    m_down.reset(key);
    m_foreign.reset(key);
}

} // namespace kestrel::fuzz
