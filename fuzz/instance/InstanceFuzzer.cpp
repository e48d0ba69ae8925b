#include "app/InstanceMessageReader.h"
#include "fuzz/Target.h"

#include <QDir>

#include <algorithm>

namespace kestrel {
namespace {

using State = InstanceMessageReader::State;

struct Result {
    State state = State::Incomplete;
    InstanceMessage message;
};

// Reads the bytes in pieces of this size, as a socket may bring them.
Result read(const QByteArray& bytes, qsizetype pieceSize)
{
    InstanceMessageReader reader;
    State state = State::Incomplete;
    for (qsizetype at = 0; at < bytes.size() && state == State::Incomplete; at += pieceSize)
        state = reader.add(bytes.mid(at, pieceSize));
    return { state, state == State::Complete ? reader.message() : InstanceMessage() };
}

std::string messageFault(const QByteArray& bytes, const InstanceMessage& message)
{
    if (message.body.size() > InstanceMessage::MaxBodySize)
        return "a body beyond the limit";
    if (!bytes.startsWith(message.encoded()))
        return "a message that is encoded otherwise than it came";
    const auto paths = message.paths();
    if (!paths)
        return {};
    for (const QString& path : *paths) {
        if (!QDir::isAbsolutePath(path))
            return "a path that is not absolute";
    }
    return InstanceMessage::open(*paths).paths() == paths ? ""
                                                          : "paths that are sent on differently";
}

} // namespace
} // namespace kestrel

// The first byte is the size of the pieces in which the rest arrives.
std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    if (input.empty())
        return {};
    const auto rest = input.subspan(1);
    const QByteArray bytes(
        reinterpret_cast<const char*>(rest.data()), static_cast<qsizetype>(rest.size()));
    const Result inPieces = read(bytes, std::max<qsizetype>(input[0], 1));
    const Result whole = read(bytes, std::max<qsizetype>(bytes.size(), 1));
    if (inPieces.state != whole.state || inPieces.message.kind != whole.message.kind
        || inPieces.message.body != whole.message.body)
        return "a message in pieces is read otherwise than a whole one";
    return whole.state == State::Complete ? messageFault(bytes, whole.message) : "";
}
