#include "platform/SessionFolder.h"
#include "platform/SystemFacts.h"
#include "platform/Workstation.h"
#include "platform/linux/autostart/AutostartLoginItem.h"
#include "platform/linux/defaults/FileDefaultsStore.h"
#include "platform/linux/facts/DisplayFacts.h"
#include "platform/linux/facts/MIDIFacts.h"
#include "platform/linux/facts/SetOpener.h"
#include "platform/linux/system/SystemAdapters.h"
#include "platform/linux/x11/HeldKeysJournal.h"

#include <sys/stat.h>
#include <unistd.h>

namespace kestrel {

namespace {
// Why another start could not claim its place there; a sentence. Empty when it could.
std::string problemOfSession(const std::string& session)
{
    if (session.empty())
        return "There is no folder for the files of the session.";
    const std::string folder = session + "/kestrel";
    struct stat status { };
    if (::lstat(folder.c_str(), &status) != 0)
        return {};
    if (!S_ISDIR(status.st_mode))
        return folder + " is no folder.";
    if (status.st_uid != ::geteuid())
        return folder + " belongs to another user.";
    const std::string lock = folder + "/kestrel.lock";
    if (::lstat(lock.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        return lock + " is no plain file.";
    return {};
}

bool exists(const std::string& path)
{
    struct stat status { };
    return ::lstat(path.c_str(), &status) == 0;
}

void lookAtDefaults(SystemFacts::Files& facts)
{
    const QString path = FileDefaultsStore::standardPath();
    const FileDefaultsStore store(path);
    facts.defaultsProblem = store.wasDamaged() ? "The file is no property list" : store.problem();
    if (const std::string damaged = path.toStdString() + ".damaged"; exists(damaged))
        facts.damagedDefaults = damaged;
}

// The keys in the journal of a running program are no left-over. A journal may name keys that have
// come up since.
int leftoverKeys(const DisplayFacts& facts, long kestrel)
{
    if (kestrel != 0 || facts.display.name.empty())
        return 0;
    const auto keys = HeldKeysJournal::keysIn(HeldKeysJournal::pathFor(facts.display.name));
    return static_cast<int>((keys & facts.keysDown).count());
}
} // namespace

SystemFacts gatherSystemFacts(long kestrel)
{
    SystemFacts facts;
    const DisplayFacts display = displayFacts();
    facts.display = display.display;
    facts.workstationRuns = makeProcessTable()->isRunning(Workstation::Name);
    facts.midi = midiFacts(kestrel);
    facts.files.sessionProblem = problemOfSession(sessionFolder());
    lookAtDefaults(facts.files);
    facts.files.leftoverKeys = leftoverKeys(display, kestrel);
    facts.files.openedBy = openerOfSets();
    AutostartLoginItem autostart(standardAutostartEntry(), {});
    facts.autostart = { .isEnabled = autostart.isEnabled(),
        .missingProgram = autostart.missingProgram().toStdString() };
    return facts;
}

} // namespace kestrel
