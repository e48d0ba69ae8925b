#include "tests/end-to-end/SessionManager.h"

#include <X11/SM/SMlib.h>
#include <poll.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace kestrel::test {

namespace {
constexpr int PollMs = 20;

Bool admitEverybody(char*)
{
    return True;
}

void freeProperties(SmsConn, SmPointer, int count, SmProp** properties)
{
    for (int i = 0; i < count; ++i)
        SmFreeProperty(properties[i]);
    std::free(properties);
}

void freeNames(SmsConn, SmPointer, int count, char** names)
{
    for (int i = 0; i < count; ++i)
        std::free(names[i]);
    std::free(names);
}

void returnNoProperties(SmsConn client, SmPointer)
{
    SmsReturnProperties(client, 0, nullptr);
}
} // namespace

// Everything but the constructor and the destructor runs on its thread.
class SessionManager::Protocol {
public:
    Protocol();
    ~Protocol();
    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    std::string address;
    std::atomic<bool> hasClient = false;
    std::atomic<bool> isEnding = false;
    std::atomic<bool> isSaved = false;

private:
    static Status newClient(SmsConn client, SmPointer manager, unsigned long* callbackMask,
        SmsCallbacks* callbacks, char** reason);
    static Status registerClient(SmsConn client, SmPointer manager, char* previousId);
    static void saveYourselfDone(SmsConn client, SmPointer manager, Bool success);
    static void closeConnection(SmsConn client, SmPointer manager, int count, char** reasons);

    void run(const std::stop_token& stop);
    void waitForSomething() const;
    void acceptConnections();
    void readMessages();

    int m_listenerCount = 0;
    IceListenObj* m_listeners = nullptr;
    std::vector<IceConn> m_connections;
    std::vector<SmsConn> m_clients;
    bool m_hasToldEnd = false;
    std::jthread m_thread; // last, so that it ends first
};

SessionManager::Protocol::Protocol()
{
    std::array<char, 256> error {};
    const auto errorSize = static_cast<int>(error.size());
    if (!SmsInitialize(
            "Kestrel tests", "1", newClient, this, admitEverybody, errorSize, error.data())
        || !IceListenForConnections(&m_listenerCount, &m_listeners, errorSize, error.data()))
        throw std::runtime_error(std::string("session manager: ") + error.data());
    IceSetIOErrorHandler([](IceConn) {});
    for (int i = 0; i < m_listenerCount; ++i)
        IceSetHostBasedAuthProc(m_listeners[i], admitEverybody);
    char* const composed = IceComposeNetworkIdList(m_listenerCount, m_listeners);
    this->address = composed;
    std::free(composed);
    m_thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

SessionManager::Protocol::~Protocol()
{
    m_thread.request_stop();
    m_thread.join();
    IceFreeListenObjs(m_listenerCount, m_listeners);
}

void SessionManager::Protocol::run(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        waitForSomething();
        acceptConnections();
        readMessages();
        if (!isEnding || m_hasToldEnd)
            continue;
        m_hasToldEnd = true;
        for (SmsConn client : m_clients)
            SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleNone, False);
    }
}

void SessionManager::Protocol::waitForSomething() const
{
    std::vector<pollfd> watched;
    watched.reserve(static_cast<std::size_t>(m_listenerCount) + m_connections.size());
    for (int i = 0; i < m_listenerCount; ++i)
        watched.push_back({ IceGetListenConnectionNumber(m_listeners[i]), POLLIN, 0 });
    for (IceConn connection : m_connections)
        watched.push_back({ IceConnectionNumber(connection), POLLIN, 0 });
    ::poll(watched.data(), watched.size(), PollMs);
}

void SessionManager::Protocol::acceptConnections()
{
    for (int i = 0; i < m_listenerCount; ++i) {
        pollfd waiting { IceGetListenConnectionNumber(m_listeners[i]), POLLIN, 0 };
        if (::poll(&waiting, 1, 0) <= 0)
            continue;
        IceAcceptStatus status = IceAcceptFailure;
        if (IceConn connection = IceAcceptConnection(m_listeners[i], &status))
            m_connections.push_back(connection);
    }
}

void SessionManager::Protocol::readMessages()
{
    for (IceConn connection : std::vector(m_connections)) {
        pollfd waiting { IceConnectionNumber(connection), POLLIN, 0 };
        if (::poll(&waiting, 1, 0) <= 0)
            continue;
        const auto status = IceProcessMessages(connection, nullptr, nullptr);
        if (status != IceProcessMessagesSuccess)
            std::erase(m_connections, connection);
        if (status == IceProcessMessagesIOError)
            IceCloseConnection(connection);
    }
}

Status SessionManager::Protocol::newClient(
    SmsConn client, SmPointer manager, unsigned long* callbackMask, SmsCallbacks* callbacks, char**)
{
    *callbacks = {};
    *callbackMask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask
        | SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask
        | SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask
        | SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
    callbacks->register_client = { registerClient, manager };
    callbacks->interact_request = { [](SmsConn, SmPointer, int) {}, manager };
    callbacks->interact_done = { [](SmsConn, SmPointer, Bool) {}, manager };
    callbacks->save_yourself_request
        = { [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, manager };
    callbacks->save_yourself_phase2_request
        = { [](SmsConn conn, SmPointer) { SmsSaveYourselfPhase2(conn); }, manager };
    callbacks->save_yourself_done = { saveYourselfDone, manager };
    callbacks->close_connection = { closeConnection, manager };
    callbacks->set_properties = { freeProperties, manager };
    callbacks->delete_properties = { freeNames, manager };
    callbacks->get_properties = { returnNoProperties, manager };
    static_cast<Protocol*>(manager)->m_clients.push_back(client);
    return True;
}

// Every new client is first told to save itself, without an end of the session.
Status SessionManager::Protocol::registerClient(SmsConn client, SmPointer, char* previousId)
{
    if (previousId) {
        std::free(previousId);
        return False; // it then registers as a new one
    }
    char* const id = SmsGenerateClientID(client);
    SmsRegisterClientReply(client, id);
    std::free(id);
    SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
    return True;
}

void SessionManager::Protocol::saveYourselfDone(SmsConn client, SmPointer manager, Bool success)
{
    auto& self = *static_cast<Protocol*>(manager);
    if (self.m_hasToldEnd) {
        self.isSaved = success == True;
        return;
    }
    SmsSaveComplete(client);
    self.hasClient = true;
}

void SessionManager::Protocol::closeConnection(
    SmsConn client, SmPointer manager, int count, char** reasons)
{
    auto& self = *static_cast<Protocol*>(manager);
    SmFreeReasons(count, reasons);
    std::erase(self.m_clients, client);
    IceConn connection = SmsGetIceConnection(client);
    std::erase(self.m_connections, connection);
    SmsCleanUp(client);
    IceSetShutdownNegotiation(connection, False);
    IceCloseConnection(connection);
}

SessionManager::SessionManager()
    : m_protocol(std::make_unique<Protocol>())
{
}

SessionManager::~SessionManager() = default;

stage::ChildProcess::Environment SessionManager::environment() const
{
    return { { "SESSION_MANAGER", m_protocol->address } };
}

bool SessionManager::hasClient() const
{
    return m_protocol->hasClient;
}

void SessionManager::endSession()
{
    m_protocol->isEnding = true;
}

bool SessionManager::isSaved() const
{
    return m_protocol->isSaved;
}

} // namespace kestrel::test
