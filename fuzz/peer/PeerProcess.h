#pragma once

#include "archive/Bytes.h"

#include <sys/types.h>

#include <optional>
#include <string>

namespace kestrel::fuzz {

// The peer as a process that stays, and is started again when an input has ended it: GNUstep was
// not written for hostile archives.
class PeerProcess {
public:
    explicit PeerProcess(const char* program);
    ~PeerProcess();
    PeerProcess(const PeerProcess&) = delete;
    PeerProcess& operator=(const PeerProcess&) = delete;

    // The peer's text of the archive. No value when it cannot read it, or not within a second.
    [[nodiscard]] std::optional<std::string> read(ByteView archive);

private:
    void start();
    void stop();
    [[nodiscard]] bool write(const void* bytes, std::size_t size) const;
    [[nodiscard]] bool readExactly(void* bytes, std::size_t size) const;

    const char* m_program;
    pid_t m_process = -1;
    int m_toPeer = -1;
    int m_fromPeer = -1;
};

} // namespace kestrel::fuzz
