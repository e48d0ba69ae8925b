#include "control/ActivityLine.h"
#include "control/InstanceMessageReader.h"
#include "control/StatusReport.h"
#include "fuzz/Target.h"

#include <QDir>
#include <QList>

#include <algorithm>

namespace kestrel {
namespace {

using State = InstanceMessageReader::State;

struct Result {
    State state = State::Incomplete;
    InstanceMessage message;
};

// Reads no byte beyond the message, as a program that awaits another one does.
Result readOne(const QByteArray& bytes)
{
    InstanceMessageReader reader;
    State state = State::Incomplete;
    for (qsizetype at = 0; at < bytes.size() && state == State::Incomplete;) {
        const QByteArray piece = bytes.mid(at, reader.missing());
        state = reader.add(piece);
        at += piece.size();
    }
    return { state, state == State::Complete ? reader.message() : InstanceMessage() };
}

bool areSame(const Result& left, const Result& right)
{
    return left.state == right.state && left.message.kind == right.message.kind
        && left.message.body == right.message.body;
}

// Reads the bytes in pieces of this size, as a socket may bring them.
Result read(const QByteArray& bytes, qsizetype pieceSize)
{
    InstanceMessageReader reader;
    State state = State::Incomplete;
    for (qsizetype at = 0; at < bytes.size() && state == State::Incomplete; at += pieceSize)
        state = reader.add(bytes.mid(at, pieceSize));
    return { state, state == State::Complete ? reader.message() : InstanceMessage() };
}

std::string pathsFault(const InstanceMessage& message)
{
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

// What is accepted is written in one way, and reads the same.
std::string reportFault(const QByteArray& body)
{
    const auto report = StatusReport::fromJson(body);
    if (!report)
        return {};
    const QByteArray text = report->toJson();
    const auto again = StatusReport::fromJson(text);
    return again && again->toJson() == text ? "" : "a status that is sent on differently";
}

std::string eventsFault(const QByteArray& body)
{
    for (const QByteArray& text : body.split('\n')) {
        const auto line = ActivityLine::fromJson(text);
        if (!line)
            continue;
        const QByteArray written = line->toJson();
        const auto again = ActivityLine::fromJson(written);
        if (written.contains('\n') || !again || again->toJson() != written)
            return "an event that is sent on differently";
        if (droppedIn(text))
            return "a line that is two things";
    }
    return {};
}

std::string messageFault(const QByteArray& bytes, const InstanceMessage& message)
{
    if (message.body.size() > InstanceMessage::MaxBodySize)
        return "a body beyond the limit";
    if (!bytes.startsWith(message.encoded()))
        return "a message that is encoded otherwise than it came";
    if (message.kind == InstanceMessage::Kind::Report)
        return reportFault(message.body);
    if (message.kind == InstanceMessage::Kind::Events)
        return eventsFault(message.body);
    return pathsFault(message);
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
    if (!areSame(inPieces, whole) || !areSame(readOne(bytes), whole))
        return "a message in pieces is read otherwise than a whole one";
    return whole.state == State::Complete ? messageFault(bytes, whole.message) : "";
}
