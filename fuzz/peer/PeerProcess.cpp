#include "fuzz/peer/PeerProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace kestrel::fuzz {

namespace {
constexpr int PatienceMs = 1000;
}

PeerProcess::PeerProcess(const char* program)
    : m_program(program)
{
    ::signal(SIGPIPE, SIG_IGN);
}

PeerProcess::~PeerProcess()
{
    stop();
}

std::optional<std::string> PeerProcess::read(ByteView archive)
{
    if (m_process < 0)
        start();
    auto size = static_cast<std::uint32_t>(archive.size());
    std::string text;
    if (write(&size, sizeof size) && write(archive.data(), archive.size())
        && readExactly(&size, sizeof size)) {
        text.resize(size);
        if (readExactly(text.data(), size))
            return size > 0 ? std::optional(text) : std::nullopt;
    }
    stop();
    return {};
}

void PeerProcess::start()
{
    std::array<int, 2> to {};
    std::array<int, 2> from {};
    if (::pipe2(to.data(), O_CLOEXEC) != 0 || ::pipe2(from.data(), O_CLOEXEC) != 0)
        std::abort();
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, to[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, from[1], STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string program = m_program;
    std::string serve = "serve";
    std::array<char*, 3> arguments { program.data(), serve.data(), nullptr };
    if (::posix_spawn(&m_process, m_program, &actions, nullptr, arguments.data(), environ) != 0)
        std::abort();
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(to[0]);
    ::close(from[1]);
    m_toPeer = to[1];
    m_fromPeer = from[0];
}

void PeerProcess::stop()
{
    if (m_process < 0)
        return;
    ::close(m_toPeer);
    ::close(m_fromPeer);
    ::kill(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
    m_process = -1;
}

bool PeerProcess::write(const void* bytes, std::size_t size) const
{
    const char* at = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t written = ::write(m_toPeer, at, size);
        if (written <= 0)
            return false;
        at += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool PeerProcess::readExactly(void* bytes, std::size_t size) const
{
    char* at = static_cast<char*>(bytes);
    while (size > 0) {
        pollfd readable { m_fromPeer, POLLIN, 0 };
        const ssize_t got
            = ::poll(&readable, 1, PatienceMs) == 1 ? ::read(m_fromPeer, at, size) : -1;
        if (got <= 0)
            return false;
        at += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

} // namespace kestrel::fuzz
