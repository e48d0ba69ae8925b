#include "tools/stage/PrivateJackServer.h"

#include <fcntl.h>
#include <jack/jack.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace kestrel::stage {

namespace {
constexpr int NameCount = 6; // the other two are for whoever else works on this machine
constexpr auto NamePatience = std::chrono::minutes(2);

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

// One of the names, for this process alone: a locked file stands for it. The server inherits the
// lock, so that a name is free only when neither its owner nor the server is left.
class PrivateJackServer::Name {
public:
    Name()
    {
        const auto deadline = std::chrono::steady_clock::now() + NamePatience;
        while (!claimAny()) {
            if (std::chrono::steady_clock::now() > deadline)
                throw std::runtime_error("all names for private JACK servers are in use");
            std::this_thread::sleep_for(milliseconds(20));
        }
    }
    ~Name()
    {
        ::flock(m_lock, LOCK_UN);
        ::close(m_lock);
    }
    Name(const Name&) = delete;
    Name& operator=(const Name&) = delete;

    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    bool claimAny()
    {
        for (int number = 1; number <= NameCount; ++number) {
            m_text = "kestrel-" + std::to_string(::getuid()) + "-" + std::to_string(number);
            m_lock = ::open(("/dev/shm/" + m_text + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
            if (m_lock >= 0 && ::flock(m_lock, LOCK_EX | LOCK_NB) == 0)
                return true;
            if (m_lock >= 0)
                ::close(m_lock);
        }
        return false;
    }

    int m_lock = -1;
    std::string m_text;
};

PrivateJackServer::PrivateJackServer()
    : m_nameClaim(std::make_unique<Name>())
    , m_name(m_nameClaim->text())
{
    start();
}

PrivateJackServer::~PrivateJackServer() = default;

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
