#include "platform/linux/midi/ChangeTeller.h"

#include "platform/linux/midi/ForeignPorts.h"

#include <chrono>
#include <utility>

namespace kestrel {

ChangeTeller::ChangeTeller(MainLoop& mainLoop, std::function<void()> remind)
    : m_watch(mainLoop.watch(m_alarm.descriptor(), [this, remind = std::move(remind)] {
        m_alarm.lower();
        remind();
    }))
{
}

void ChangeTeller::begin(MIDIServices::NotifyProc notify, void* refCon)
{
    m_receiver = std::make_shared<Receiver>(Receiver { notify, refCon });
}

void ChangeTeller::end()
{
    m_receiver.reset();
    m_alarm.lower();
}

void ChangeTeller::tellDue(ForeignPorts& ports)
{
    const auto now = std::chrono::steady_clock::now();
    const PortChanges::Due due = ports.tellDue();
    const auto next = m_pace.next(due);
    if (next > now) {
        m_alarm.set(next);
        return;
    }
    const unsigned kinds = ports.takeChanges();
    if ((kinds & (PortChanges::SourceAdded | PortChanges::SourceRemoved)) != 0)
        m_pace.told(due, now); // the link is rebuilt
    m_alarm.set(m_pace.next(ports.tellDue()));
    tell(kinds);
}

void ChangeTeller::tell(unsigned kinds)
{
    using Notification = MIDINotification;
    const auto receiver = m_receiver;
    const auto tellOne = [&](unsigned removed, unsigned added, std::int32_t type) {
        // The receiver may have ended the client at the first notification.
        if ((kinds & (removed | added)) == 0 || !receiver || receiver != m_receiver
            || !receiver->notify)
            return;
        const std::int32_t message
            = (kinds & removed) != 0 ? Notification::ObjectRemoved : Notification::ObjectAdded;
        receiver->notify(MIDINotification { message, type }, receiver->refCon);
    };
    tellOne(PortChanges::SourceRemoved, PortChanges::SourceAdded, Notification::Source);
    tellOne(
        PortChanges::DestinationRemoved, PortChanges::DestinationAdded, Notification::Destination);
}

} // namespace kestrel
