#include "tools/stage/PrivateJackServer.h"

#include "tools/stage/JackMetadataStore.h"

#include <fcntl.h>
#include <jack/jack.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <future>
#include <stdexcept>
#include <thread>
#include <utility>

namespace kestrel::stage {

namespace {
constexpr auto TurnPatience = std::chrono::minutes(4);
constexpr auto ProbePatience = std::chrono::seconds(10);

std::string nameForUser()
{
    return "kestrel-" + std::to_string(::getuid());
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

// Asks on a thread of its own, which is given up when JACK's library never returns.
bool answersInTime(const std::string& serverName)
{
    std::promise<bool> promise;
    auto answer = promise.get_future();
    std::thread([promise = std::move(promise), serverName]() mutable {
        promise.set_value(answers(serverName));
    }).detach();
    if (answer.wait_for(ProbePatience) == std::future_status::ready)
        return answer.get();
    throw std::runtime_error("no JACK client can be opened, perhaps because one was killed while "
                             "it held the lock of "
        + jackMetadataFolder().string());
}
} // namespace

// The right to run the server, which is a lock on a file. The server inherits the lock, so it is
// free only after both this process and the server have ended.
class PrivateJackServer::Turn {
public:
    explicit Turn(const std::string& name)
        : m_lock(::open(("/dev/shm/" + name + ".lock").c_str(), O_RDWR | O_CREAT, 0600))
    {
        const auto deadline = std::chrono::steady_clock::now() + TurnPatience;
        while (::flock(m_lock, LOCK_EX | LOCK_NB) != 0) {
            if (std::chrono::steady_clock::now() > deadline)
                throw std::runtime_error("another program keeps its private JACK server running");
            std::this_thread::sleep_for(milliseconds(20));
        }
    }
    ~Turn()
    {
        ::flock(m_lock, LOCK_UN);
        ::close(m_lock);
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    int m_lock = -1;
};

PrivateJackServer::PrivateJackServer(Cycles cycles)
    : m_turn(std::make_unique<Turn>(nameForUser()))
    , m_name(nameForUser())
    , m_cycles(cycles)
{
    start();
}

PrivateJackServer::~PrivateJackServer()
{
    m_process.reset();
    removeUnusedJackMetadata(); // the user's own clients need it unlocked
}

void PrivateJackServer::start()
{
    removeUnusedJackMetadata();
    std::vector<std::string> command { "jackd", "--silent", "-n", m_name, "-r" };
    if (m_cycles == Cycles::WaitForClients)
        command.insert(command.end(), { "-S", "-t", "10000" });
    command.insert(
        command.end(), { "-d", "dummy", "-r", "48000", "-p", std::to_string(FramesPerPeriod) });
    m_process = std::make_unique<ChildProcess>(command);
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    for (int attempt = 0; attempt < 200; ++attempt) {
        if (answersInTime(m_name))
            return;
        if (m_process->wait(milliseconds(50)))
            break;
    }
    throw std::runtime_error("the private JACK server did not come up");
}

void PrivateJackServer::stop()
{
    m_process->stop();
}
void PrivateJackServer::resume()
{
    m_process->resume();
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
