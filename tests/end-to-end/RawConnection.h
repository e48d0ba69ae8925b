#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <string_view>

namespace kestrel::test {

// A connection to a socket in the file system, by the system's calls alone.
class RawConnection {
public:
    explicit RawConnection(const std::string& path)
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        const auto* const where = reinterpret_cast<const sockaddr*>(&address);
        m_error = ::connect(m_descriptor, where, sizeof address) == 0 ? 0 : errno;
    }
    ~RawConnection() { ::close(m_descriptor); }
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    [[nodiscard]] int error() const { return m_error; } // of the connecting; 0 if there was none

    // False when the other side does not take all of it.
    [[nodiscard]] bool send(std::string_view bytes) const
    {
        const auto sent = ::send(m_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        return sent == static_cast<ssize_t>(bytes.size());
    }
    // What arrives until the other side closes the connection. "(open)" when it does not in time.
    [[nodiscard]] std::string readToEnd(std::chrono::milliseconds timeout) const
    {
        std::string text;
        for (;;) {
            pollfd ready { m_descriptor, POLLIN, 0 };
            if (::poll(&ready, 1, static_cast<int>(timeout.count())) <= 0)
                return "(open)";
            char buffer[4096];
            const auto size = ::read(m_descriptor, buffer, sizeof buffer);
            if (size <= 0)
                return text;
            text.append(buffer, static_cast<std::size_t>(size));
        }
    }

private:
    int m_descriptor;
    int m_error = 0;
};

} // namespace kestrel::test
