#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace kestrel {

// A message on the socket of the running program, in either direction. Its bytes:
//
//   offset  length
//   0       4       "KSTL"
//   4       1       the version of the protocol: 1
//   5       1       the kind, a letter
//   6       4       the length of the body, big-endian, at most MaxBodySize
//   10              the body
//
// A connection carries one request and then one answer, after which the program closes it. Only the
// answer to Follow is followed by others. A connection ends without an answer when the program is
// ending, which has then done nothing, and when the connection is too slow or one too many; its
// request may then have been carried out. All versions keep the first ten bytes. docs/socket.md
// describes the requests.
struct InstanceMessage {
    enum class Kind : char {
        // Request: open the files, or show the setup window if there are none. The body is a list
        // of absolute paths in UTF-8, each one followed by a NUL.
        Open = 'O',
        Status = 'S', // request: what does the program do? no body
        Follow = 'F', // request: what happens from now on, and what has happened before? no body
        Done = 'D', // answer, after the request was carried out; no body
        Refused = 'R', // answer; the body is the reason, a sentence in UTF-8
        Report = 'I', // answer to Status; the body is a StatusReport in JSON
        // After Done, the answer to Follow. The body is a number of lines, each an ActivityLine or
        // a line of droppedLine(), with a line feed.
        Events = 'E',
    };

    static constexpr int Version = 1;
    static constexpr qsizetype HeaderSize = 10;
    static constexpr qsizetype MaxBodySize = 1 << 20;

    // Leaves out the paths from the first one on that does not fit.
    [[nodiscard]] static InstanceMessage open(const QStringList& paths);
    [[nodiscard]] static InstanceMessage refused(const char* reason);

    // The paths in the body. No value when one of them is empty, relative, or not in UTF-8.
    [[nodiscard]] std::optional<QStringList> paths() const;
    [[nodiscard]] QByteArray encoded() const;

    Kind kind = Kind::Done; // may be a letter that the program does not know
    QByteArray body;
};

} // namespace kestrel
