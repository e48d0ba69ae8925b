#include "activity/OutcomeWords.h"

#include "link/ConsoleProtocol.h"

namespace kestrel {

namespace {
using Outcome = ActivityEvent::Outcome;

// The fifth byte of a whole message names the key, or the third byte of a message's second packet.
std::string keyOf(const ActivityEvent& event)
{
    const auto bytes = event.bytes();
    if (bytes.size() < 3)
        return "the key";
    const auto code = bytes.size() > 4 ? bytes[4] : bytes[2];
    return "key " + std::to_string((code & ~ConsoleProtocol::KeyPressed) + 1);
}

// The controllers of keys and lamps mean something only after their zone was selected.
std::string ignoredWords(const ActivityEvent& event)
{
    using namespace ConsoleProtocol;
    const auto bytes = event.bytes();
    if (bytes.size() >= 3 && bytes[0] == ControlChange
        && (bytes[1] == KeyPort || bytes[1] == LampPort))
        return "nothing: no packet before it selected its zone";
    return "nothing: unknown packet";
}

std::string frontWords(std::string_view inFront)
{
    if (inFront.empty())
        return "nothing: no application is in front";
    return "nothing: " + std::string(inFront) + " is in front, not Pro Tools";
}
} // namespace

std::string OutcomeWords::describe(const ActivityEvent& event)
{
    if (event.kind() != ActivityEvent::Kind::Packet)
        return {};
    const std::string text(event.text());
    switch (event.outcome()) {
    case Outcome::Ignored:
        return ignoredWords(event);
    case Outcome::Awaited:
        return {};
    case Outcome::Answered:
        return "answered";
    case Outcome::NotAnswered:
        return "nothing: the answer could not be sent";
    case Outcome::Shown:
        return "shown";
    case Outcome::Typed:
        return "typed " + text;
    case Outcome::Released:
        return "let go of " + text;
    case Outcome::OtherInFront:
        return frontWords(event.text());
    case Outcome::NoShortcut:
        return "nothing: " + keyOf(event) + " has no shortcut";
    case Outcome::NoSuchKey:
        return "nothing: there is no such key";
    case Outcome::NotPermitted:
        return "nothing: the permission to post keys is missing";
    case Outcome::KeyUnknown:
        return "nothing: the keyboard has no key for " + text;
    case Outcome::SessionUnavailable:
        return "nothing: the session takes no keys at present";
    }
    return {};
}

bool OutcomeWords::isKeptBack(const ActivityEvent& event)
{
    switch (event.outcome()) {
    case Outcome::OtherInFront:
    case Outcome::NoShortcut:
    case Outcome::NotPermitted:
    case Outcome::KeyUnknown:
    case Outcome::SessionUnavailable:
        return true;
    default:
        return false;
    }
}

} // namespace kestrel
