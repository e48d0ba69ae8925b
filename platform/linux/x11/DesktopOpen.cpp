#include "platform/linux/x11/DesktopOpen.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace kestrel::DesktopOpen {

namespace {
std::string findOpener()
{
    const char* value = std::getenv("PATH");
    std::string_view path = value ? value : "";
    while (!path.empty()) {
        const auto end = path.find(':');
        std::string candidate = std::string(path.substr(0, end)) + "/xdg-open";
        if (::access(candidate.c_str(), X_OK) == 0)
            return candidate;
        path = end == std::string_view::npos ? std::string_view() : path.substr(end + 1);
    }
    return {};
}

// After fork(), only functions that are safe in a signal handler may be called.
[[noreturn]] void become(const char* program, const char* argument)
{
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
    ::execl(program, program, argument, static_cast<char*>(nullptr));
    ::_exit(127);
}
} // namespace

bool open(std::string_view path)
{
    // Keeps a file name that begins with "-" from being taken for an option.
    const std::string file = std::string(path.starts_with("-") ? "./" : "") + std::string(path);
    const std::string opener = findOpener();
    if (opener.empty() || ::access(file.c_str(), F_OK) != 0)
        return false;
    // Forks twice, so that no zombie stays: this process waits for the first child, and the system
    // adopts and reaps the second one.
    const pid_t between = ::fork();
    if (between == 0) {
        ::setsid();
        const pid_t detached = ::fork();
        if (detached == 0)
            become(opener.c_str(), file.c_str());
        ::_exit(detached > 0 ? 0 : 1);
    }
    int status = 0;
    return between > 0 && ::waitpid(between, &status, 0) == between && status == 0;
}

} // namespace kestrel::DesktopOpen
