#include "tools/stage/ChildProcess.h"

#include "tools/stage/NativeProcess.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

namespace kestrel::stage {

namespace {
using Clock = std::chrono::steady_clock;

[[noreturn]] void throwErrno(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

int millisecondsUntil(Clock::time_point deadline)
{
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
    return left > 0 ? static_cast<int>(left) : 0;
}

[[noreturn]] void runChild(
    const std::vector<std::string>& command, const ChildProcess::Environment& environment)
{
    endWithParent();
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
    for (const auto& [name, value] : environment)
        ::setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const auto& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}
} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const Environment& environment)
{
    ::signal(SIGPIPE, SIG_IGN);
    int input[2];
    int output[2];
    if (!makePrivatePipe(input))
        throwErrno("pipe");
    if (!makePrivatePipe(output)) {
        ::close(input[0]);
        ::close(input[1]);
        throwErrno("pipe");
    }
    m_pid = ::fork();
    if (m_pid == 0) {
        ::dup2(input[0], STDIN_FILENO);
        ::dup2(output[1], STDOUT_FILENO);
        runChild(command, environment);
    }
    ::close(input[0]);
    ::close(output[1]);
    m_input = input[1];
    m_output = output[0];
    if (m_pid < 0)
        throwErrno("fork");
}

ChildProcess::~ChildProcess()
{
    closeInput();
    if (!m_exitCode) {
        signal(SIGCONT);
        signal(SIGTERM);
        if (!wait(milliseconds(2000))) {
            signal(SIGKILL);
            wait(milliseconds(2000));
        }
    }
    ::close(m_output);
}

std::optional<std::string> ChildProcess::nextLine(Clock::time_point deadline)
{
    for (;;) {
        if (const auto end = m_partial.find('\n'); end != std::string::npos) {
            std::string line = m_partial.substr(0, end);
            m_partial.erase(0, end + 1);
            return line;
        }
        pollfd ready { m_output, POLLIN, 0 };
        const int count = ::poll(&ready, 1, millisecondsUntil(deadline));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return {};
        char buffer[4096];
        const ssize_t size = ::read(m_output, buffer, sizeof buffer);
        if (size <= 0)
            return {};
        m_partial.append(buffer, static_cast<std::size_t>(size));
    }
}

std::optional<std::string> ChildProcess::waitForLine(
    const LinePredicate& wanted, milliseconds timeout)
{
    const auto deadline = Clock::now() + timeout;
    while (auto line = nextLine(deadline)) {
        if (wanted(*line))
            return line;
    }
    return {};
}

std::optional<std::string> ChildProcess::waitForLineWith(
    std::string_view text, milliseconds timeout)
{
    return waitForLine(
        [text](std::string_view line) { return line.find(text) != std::string_view::npos; },
        timeout);
}

std::vector<std::string> ChildProcess::linesUntilQuiet(milliseconds quiet)
{
    std::vector<std::string> lines;
    while (auto line = nextLine(Clock::now() + quiet))
        lines.push_back(std::move(*line));
    return lines;
}

void ChildProcess::writeLine(std::string_view line)
{
    std::string text(line);
    text += '\n';
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t size = ::write(m_input, text.data() + done, text.size() - done);
        if (size < 0 && errno == EINTR)
            continue;
        if (size <= 0)
            throwErrno("write to child");
        done += static_cast<std::size_t>(size);
    }
}

void ChildProcess::closeInput()
{
    if (m_input >= 0)
        ::close(m_input);
    m_input = -1;
}

void ChildProcess::signal(int number) const
{
    if (m_pid > 0 && !m_exitCode)
        ::kill(m_pid, number);
}

void ChildProcess::stop() const
{
    signal(SIGSTOP);
    // WNOWAIT leaves the exit code to wait() if the program has ended.
    siginfo_t change {};
    while (m_pid > 0 && !m_exitCode
        && ::waitid(P_PID, static_cast<id_t>(m_pid), &change, WSTOPPED | WEXITED | WNOWAIT) != 0
        && errno == EINTR) { }
}

void ChildProcess::resume() const
{
    signal(SIGCONT);
}

std::optional<int> ChildProcess::wait(milliseconds timeout)
{
    const auto deadline = Clock::now() + timeout;
    while (!m_exitCode) {
        int status = 0;
        if (::waitpid(m_pid, &status, WNOHANG) == m_pid) {
            m_exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        } else if (Clock::now() >= deadline) {
            return {};
        } else {
            std::this_thread::sleep_for(milliseconds(2));
        }
    }
    return m_exitCode;
}

} // namespace kestrel::stage
