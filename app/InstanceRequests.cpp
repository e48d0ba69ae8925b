#include "app/InstanceRequests.h"

#include "app/AppDelegate.h"
#include "app/BundleInfo.h"
#include "control/ActivityFeed.h"
#include "platform/Platform.h"
#include "platform/Workstation.h"

#include <QCoreApplication>

#include <chrono>
#include <memory>

namespace kestrel {

namespace {
QString nameOf(LinkHealth::State state)
{
    switch (state) {
    case LinkHealth::State::NoMIDIService:
        return StatusReport::NoMIDIService;
    case LinkHealth::State::NoConsole:
        return StatusReport::NoConsole;
    case LinkHealth::State::Waiting:
        return StatusReport::Waiting;
    case LinkHealth::State::Online:
        return StatusReport::Online;
    case LinkHealth::State::Silent:
        return StatusReport::Silent;
    case LinkHealth::State::Unknown:
        break;
    }
    return StatusReport::Closed;
}

bool hasShortcut(const ButtonEntry& entry)
{
    for (std::size_t i = 0; entry && i + ShortcutRecordSize <= entry->size();
         i += ShortcutRecordSize) {
        if (!entry->at(i + ShortcutRecord::Text).text().isEmpty())
            return true;
    }
    return false;
}

qint64 keysWithShortcut(const UserAssignFile& set)
{
    qint64 count = 0;
    for (int number = 1; number <= UserAssignFile::ButtonCount; ++number)
        count += hasShortcut(set.getSwitchShortcut(number)) ? 1 : 0;
    return count;
}

QString frontApplication(Workspace& workspace)
{
    QString front;
    workspace.visitActiveApplications([&front](std::string_view name) {
        front = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
        return false;
    });
    return front;
}
} // namespace

InstanceRequests::InstanceRequests(Platform& platform, AppDelegate& delegate, const Clock& clock)
    : m_platform(platform)
    , m_delegate(delegate)
    , m_clock(clock)
{
}

InstanceReply InstanceRequests::answer(const InstanceMessage& request) const
{
    using Kind = InstanceMessage::Kind;
    switch (request.kind) {
    case Kind::Status:
        return { { Kind::Report, report().toJson() } };
    case Kind::Follow: {
        const auto feed = std::make_shared<ActivityFeed>(m_delegate.activity().log());
        return { { Kind::Done, {} }, [feed] { return feed->next(); } };
    }
    default:
        return InstanceReply::unknown();
    }
}

// Asks no other process, because the main thread would wait for its answer.
StatusReport InstanceRequests::report() const
{
    StatusReport report;
    report.version
        = BundleInfo::read(QStringLiteral(":/Info.plist")).value_or(BundleInfo {}).shortVersion;
    report.process = QCoreApplication::applicationPid();
    reportLink(report);
    report.consolePairs = static_cast<qint64>(m_delegate.consolePairs());
    report.workstationRuns = m_platform.processTable->isRunning(Workstation::Name);
    report.front = frontApplication(*m_platform.workspace);
    if (const auto& set = m_delegate.myUserAssignFile())
        report.keysSet = keysWithShortcut(*set);
    report.mayPostKeys = m_platform.permissions->mayPostKeyEvents();
    for (const Notice& notice : m_delegate.notices().current())
        report.notices.append(QString::fromStdString(notice.text));
    return report;
}

void InstanceRequests::reportLink(StatusReport& report) const
{
    const LinkHealth& health = m_delegate.activity().health();
    const LinkHealth::Counts& counts = health.counts();
    report.link = nameOf(health.state());
    report.beats = static_cast<qint64>(counts.beats);
    report.missedBeats = static_cast<qint64>(counts.missedBeats);
    report.keysTyped = static_cast<qint64>(counts.typed);
    report.keysKeptBack = static_cast<qint64>(counts.keptBack);
    if (const auto since = health.onlineSince()) {
        using std::chrono::milliseconds;
        const auto online = std::chrono::duration_cast<milliseconds>(m_clock.now() - *since);
        report.onlineSince = QDateTime::currentDateTimeUtc().addMSecs(-online.count());
    }
}

} // namespace kestrel
