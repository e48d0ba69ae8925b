#include "tools/kestrelctl/doctor/DoctorFacts.h"

#include "assign/StoredAssignments.h"
#include "control/InstancePlace.h"
#include "platform/SessionFolder.h"
#include "platform/StoredDefaults.h"

#include <QFile>

#include <functional>
#include <span>
#include <string_view>

namespace kestrel::ctl {

namespace {
using Archive = std::span<const std::uint8_t>;

// Why the table under this key cannot be read. Empty when it can, or when there is none.
std::string problemOf(
    DefaultsStore& store, std::string_view key, const std::function<void(Archive)>& take)
{
    const auto archive = store.data(key);
    if (!archive)
        return {};
    try {
        take(*archive);
        return {};
    } catch (const ArchiveError& error) {
        return std::string(key) + ": " + error.what();
    }
}

DoctorFacts::Defaults defaultsFacts()
{
    const StoredDefaults stored = openStoredDefaults();
    DoctorFacts::Defaults facts { stored.place, {}, {}, false };
    UserAssignFile set;
    facts.problem = problemOf(*stored.store, StoredAssignments::ShortcutsKey,
        [&set](Archive archive) { set.setData(archive); });
    if (facts.problem.empty())
        facts.problem = problemOf(*stored.store, StoredAssignments::TitlesKey,
            [&set](Archive archive) { set.setTitleData(archive); });
    for (const std::string_view key :
        { StoredAssignments::ShortcutsKey, StoredAssignments::TitlesKey }) {
        const std::string damaged = std::string(key) + ".damaged";
        if (stored.store->data(damaged))
            facts.damaged.push_back(damaged);
    }
    facts.recoveryWaits = QFile::exists(QString::fromStdString(stored.recoveryFile));
    return facts;
}
} // namespace

DoctorFacts DoctorFacts::gather()
{
    DoctorFacts facts;
    const auto reply = RunningKestrel(instanceSocket(instanceFolder(sessionFolder())))
                           .ask(InstanceMessage::Kind::Status);
    facts.kestrel = reply.outcome;
    facts.kestrelProblem = reply.problem;
    if (reply.outcome == RunningKestrel::Outcome::Answered)
        facts.status = StatusReport::fromJson(reply.message.body);
    facts.system = gatherSystemFacts(facts.status ? facts.status->process : 0);
    facts.defaults = defaultsFacts();
    if (!facts.system.files.defaultsProblem.empty())
        facts.defaults.problem = facts.system.files.defaultsProblem;
    if (!facts.system.files.damagedDefaults.empty())
        facts.defaults.damaged.push_back(facts.system.files.damagedDefaults);
    return facts;
}

} // namespace kestrel::ctl
