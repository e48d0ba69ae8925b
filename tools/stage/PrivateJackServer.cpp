#include "tools/stage/PrivateJackServer.h"

#include <jack/jack.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace kestrel::stage {

namespace {
std::string uniqueName()
{
    static std::atomic<int> count { 0 };
    return "kestrel-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
}

bool answers(const std::string& serverName)
{
    jack_status_t status {};
    jack_client_t* client = jack_client_open("kestrel-probe",
        static_cast<jack_options_t>(JackNoStartServer | JackServerName), &status,
        serverName.c_str());
    if (client)
        jack_client_close(client);
    return client != nullptr;
}
} // namespace

PrivateJackServer::PrivateJackServer()
    : PrivateJackServer(uniqueName())
{
}

PrivateJackServer::PrivateJackServer(std::string name)
    : m_name(std::move(name))
{
    start();
}

void PrivateJackServer::start()
{
    m_process = std::make_unique<ChildProcess>(std::vector<std::string> { "jackd", "--silent", "-n",
        m_name, "-r", "-d", "dummy", "-r", "48000", "-p", std::to_string(FramesPerPeriod) });
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    for (int attempt = 0; attempt < 200; ++attempt) {
        if (answers(m_name))
            return;
        if (m_process->wait(milliseconds(50)))
            break;
    }
    throw std::runtime_error("the private JACK server did not come up");
}

void PrivateJackServer::stop()
{
    m_process->signal(SIGSTOP);
}
void PrivateJackServer::resume()
{
    m_process->signal(SIGCONT);
}

void PrivateJackServer::kill()
{
    m_process->signal(SIGKILL);
    m_process->wait(milliseconds(5000));
}

ChildProcess::Environment PrivateJackServer::environment() const
{
    return { { "JACK_DEFAULT_SERVER", m_name }, { "JACK_NO_START_SERVER", "1" } };
}

} // namespace kestrel::stage
