#include "app/ActivityRecorder.h"

#include "activity/PacketWords.h"
#include "link/MIDIMessage.h"

#include <utility>

namespace kestrel {

namespace {
using Kind = ActivityEvent::Kind;
using Outcome = ActivityEvent::Outcome;

Outcome outcomeOf(Keystroke::Outcome outcome)
{
    switch (outcome) {
    case Keystroke::Outcome::OtherInFront:
        return Outcome::OtherInFront;
    case Keystroke::Outcome::Typed:
        return Outcome::Typed;
    case Keystroke::Outcome::Released:
        return Outcome::Released;
    case Keystroke::Outcome::NoSuchKey:
        return Outcome::NoSuchKey;
    case Keystroke::Outcome::NoShortcut:
        return Outcome::NoShortcut;
    case Keystroke::Outcome::NotPermitted:
        return Outcome::NotPermitted;
    case Keystroke::Outcome::KeyUnknown:
        return Outcome::KeyUnknown;
    case Keystroke::Outcome::SessionUnavailable:
        return Outcome::SessionUnavailable;
    }
    return Outcome::Ignored;
}

Kind kindOf(LinkEvent event)
{
    switch (event) {
    case LinkEvent::Opened:
        return Kind::LinkOpened;
    case LinkEvent::Rebuilt:
        return Kind::LinkRebuilt;
    case LinkEvent::NoConsole:
        return Kind::NoConsole;
    case LinkEvent::NoMIDIService:
        return Kind::NoMIDIService;
    case LinkEvent::WorkstationMissing:
        return Kind::WorkstationMissing;
    case LinkEvent::WorkstationRuns:
        return Kind::WorkstationFound;
    case LinkEvent::ConsoleSilent:
        return Kind::ConsoleSilent;
    case LinkEvent::PacketsLost:
        break;
    }
    return Kind::PacketsLost;
}
} // namespace

ActivityRecorder::ActivityRecorder(const Clock& clock)
    : m_clock(clock)
{
}

void ActivityRecorder::noteHeartbeat(bool answered)
{
    m_outcome = answered ? Outcome::Answered : Outcome::NotAnswered;
}

void ActivityRecorder::noteKey(const Keystroke& stroke)
{
    m_outcome = outcomeOf(stroke.outcome);
    m_text = stroke.text;
}

void ActivityRecorder::record(const MIDIMessage& message)
{
    const auto packet = message.readData();
    ActivityEvent event = eventNow(Kind::Packet);
    event.setPacket(packet);
    event.setOutcome(std::exchange(m_outcome, Outcome::Ignored));
    event.setText(std::exchange(m_text, {}).view());
    if (event.outcome() == Outcome::Ignored && PacketWords::selectsZone(packet))
        event.setOutcome(Outcome::Awaited);
    keep(event);
}

void ActivityRecorder::linkChanged(LinkEvent event, std::string_view detail)
{
    if (isKnown(event))
        return;
    ActivityEvent kept = eventNow(kindOf(event));
    kept.setText(detail);
    keep(kept);
}

bool ActivityRecorder::isKnown(LinkEvent event) const
{
    switch (event) {
    case LinkEvent::NoMIDIService:
        return m_health.state() == LinkHealth::State::NoMIDIService;
    case LinkEvent::WorkstationMissing:
        return m_health.isWorkstationMissing();
    case LinkEvent::WorkstationRuns:
        return !m_health.isWorkstationMissing();
    case LinkEvent::ConsoleSilent:
        return m_health.state() == LinkHealth::State::Silent;
    default:
        return false;
    }
}

ActivityEvent ActivityRecorder::eventNow(Kind kind)
{
    return { kind, m_clock.now(), m_clock.wallTime() };
}

void ActivityRecorder::keep(const ActivityEvent& event)
{
    m_log.record(event);
    m_health.note(event);
}

} // namespace kestrel
