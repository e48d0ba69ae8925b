#include "fuzz/held-keys/ModelProgram.h"

#include <utility>

namespace kestrel::fuzz {

ModelProgram::ModelProgram(ModelServer& server, std::string journalPath, unsigned firstRequest)
    : m_server(server)
    , m_journalPath(std::move(journalPath))
    , m_firstRequest(firstRequest)
{
}

void ModelProgram::end()
{
    if (isUsable())
        m_held.releaseForGood();
    if (isUsable())
        m_held.settle();
}

void ModelProgram::connect()
{
    if (m_isConnected || m_server.standsStill())
        return;
    m_isConnected = true;
    m_isStalled = false;
    m_nextRequest = m_firstRequest;
    opened();
}

void ModelProgram::opened()
{
    m_held.openJournal(m_journalPath);
    m_held.letGoOfWhatWasLeftDown();
    m_foreign = keysDown().value_or(XKeySet().set()) & ~m_held.ledger().held();
    if (isUsable())
        m_held.post(m_held.ledger().setUserModifiers(m_userModifiers));
}

void ModelProgram::loseConnection()
{
    if (!m_isConnected)
        return;
    m_isConnected = false;
    m_unwritten.clear();
    m_events.clear();
    m_server.dropUnread();
    m_held.connectionLost();
}

void ModelProgram::press(
    XKeyCode key, const std::vector<XKeyCode>& modifiers, KeyEvents::AutoRepeat autoRepeat)
{
    if (!isUsable())
        return;
    m_held.ledger().setForeignKeys(m_userKeys | m_foreign);
    m_held.post(m_held.ledger().press(key, modifiers, autoRepeat));
}

void ModelProgram::pressBare(XKeyCode key)
{
    if (!isUsable())
        return;
    m_held.ledger().setForeignKeys(m_userKeys | m_foreign);
    m_held.post(m_held.ledger().pressBare(key));
}

void ModelProgram::release(XKeyCode key)
{
    if (isUsable())
        m_held.post(m_held.ledger().release(key));
}

void ModelProgram::releaseAll()
{
    if (isUsable())
        m_held.post(m_held.ledger().releaseAll());
}

void ModelProgram::setUserKeys(const XKeySet& keys, const XKeySet& modifiers)
{
    m_userKeys = keys;
    m_userModifiers = modifiers;
    if (isUsable())
        m_held.post(m_held.ledger().setUserModifiers(modifiers));
}

void ModelProgram::takeIn()
{
    if (!m_isConnected)
        return;
    for (const unsigned number : std::exchange(m_events, {}))
        m_held.answered(number);
    if (m_isStalled && !m_server.standsStill()) {
        m_server.handleAll();
        m_isStalled = false;
        opened();
    }
}

unsigned ModelProgram::post(const KeyStep& step)
{
    if (step.direction == KeyEvents::Direction::Up)
        m_foreign.reset(step.key);
    m_unwritten.push_back({ m_nextRequest, step });
    return m_nextRequest++;
}

void ModelProgram::flush()
{
    for (const ModelServer::Request& request : std::exchange(m_unwritten, {}))
        m_server.receive(request);
}

bool ModelProgram::synchronise()
{
    if (!isUsable())
        return false;
    flush();
    m_isStalled = m_server.standsStill();
    if (!m_isStalled)
        m_server.handleAll();
    return !m_isStalled;
}

std::optional<XKeySet> ModelProgram::keysDown()
{
    if (!synchronise())
        return {};
    return m_server.down();
}

} // namespace kestrel::fuzz
