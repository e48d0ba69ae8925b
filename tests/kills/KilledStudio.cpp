#include "tests/kills/KilledStudio.h"

#include "assign/StoredAssignments.h"
#include "platform/linux/defaults/FileDefaultsStore.h"
#include "tests/kills/KillMoment.h"
#include "tests/kills/NamedSet.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/Patience.h"
#include "tools/stage/ShownWindows.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace kestrel::test {

namespace {
using std::chrono::milliseconds;

// Longer than each activity takes on a busy machine, so that some kills come after its end.
constexpr milliseconds SavingTime { 250 };
constexpr milliseconds EndingTime { 250 };
constexpr milliseconds OpeningTime { 400 };
constexpr milliseconds PressingTime { 40 };
constexpr int Strokes = 6;
constexpr milliseconds ProgramTimeout { 10000 };
constexpr milliseconds AnswerTimeout { 60000 };
constexpr milliseconds QuestionTimeout { 3000 };

const std::string FirstSet = "first";
const std::string SecondSet = "second";
const std::string Extension = ".ZKCF";
constexpr std::string_view TemporaryEnding = ".XXXXXX";

void check(bool isTrue, const std::string& otherwise)
{
    if (!isTrue)
        throw std::runtime_error(otherwise);
}
} // namespace

KilledStudio::KilledStudio(std::mt19937& random)
    : m_random(random)
{
    // A completion that comes up late makes the sheet take a name for one in the current folder.
    std::filesystem::current_path(m_elsewhere.path());
    const auto& home = m_studio.studio.home();
    NamedSet::write(home / (FirstSet + Extension), FirstSet, NamedSet::Size::Small);
    NamedSet::write(home / (SecondSet + Extension), SecondSet, NamedSet::Size::Large);
    std::filesystem::create_directory(savedFile().parent_path());
    m_studio.startWorkstation();
    m_studio.startConsole();
    runInOrder();
}

KilledStudio::Remains KilledStudio::killDuring(Activity activity)
{
    Remains remains;
    const std::string savedBefore = savedSet();
    switch (activity) {
    case Activity::Saving:
        killWhileSaving();
        remains.isContentNew = savedSet() != savedBefore;
        break;
    case Activity::Storing:
        killWhileStoring();
        remains.isContentNew = storedSet() != m_live;
        break;
    case Activity::Holding:
        killWhileHolding();
        break;
    }
    remains.isKeyDown = !stage::keysDown(m_studio.studio.displayName()).empty();
    startAgain();
    check(m_studio.allKeysComeUp(), "a key is down after the next start");
    return remains;
}

long KilledStudio::leftovers() const
{
    return files() - m_filesInOrder;
}

// Does once and without a kill what writes files, so that all files that belong there exist.
void KilledStudio::runInOrder()
{
    m_live = SecondSet;
    m_studio.startKestrel({ (m_studio.studio.home() / (FirstSet + Extension)).string() });
    save();
    m_setup.person.waitUntilGone(m_setup.SaveTitle);
    check(m_studio.terminateKestrel() == 0, "the program did not end in order");
    check(savedSet() == FirstSet, "the set was not saved");
    startAgain();
    m_filesInOrder = files();
}

// Saves a set over the file of an earlier round, which holds the other set.
void KilledStudio::killWhileSaving()
{
    if (m_live == savedSet())
        check(openOtherSet()->wait(ProgramTimeout) == 0, "the program did not open a set");
    KillMoment moment(m_random, savedFile().parent_path());
    save();
    moment.wait(SavingTime);
    kill();
}

void KilledStudio::killWhileStoring()
{
    KillMoment moment(m_random, m_studio.studio.configFolder());
    const auto opener = openOtherSet();
    if (std::bernoulli_distribution()(m_random)) {
        check(opener->wait(ProgramTimeout) == 0, "the program did not open a set");
        m_studio.kestrel->signal(SIGTERM);
        moment.wait(EndingTime);
    } else {
        moment.wait(OpeningTime);
    }
    kill();
    // It may still wait for the program that has just been killed, and take its place.
    opener->signal(SIGKILL);
    check(opener->wait(ProgramTimeout).has_value(), "a second start outlived a kill");
}

void KilledStudio::killWhileHolding()
{
    m_studio.waitUntilInFront("Pro Tools");
    check(m_studio.isAnswered(AnswerTimeout), "the console gets no answer");
    std::uniform_int_distribution<int> key(1, UserAssignFile::ButtonCount);
    for (int stroke = 0; stroke < Strokes; ++stroke) {
        const std::string number = std::to_string(key(m_random));
        m_studio.console->writeLine("press " + number);
        if (std::bernoulli_distribution(0.3)(m_random))
            m_studio.console->writeLine("release " + number);
    }
    waitAtRandom(m_random, PressingTime);
    kill();
}

void KilledStudio::kill()
{
    m_studio.kestrel->signal(SIGKILL);
    check(m_studio.kestrel->wait(ProgramTimeout).has_value(), "the program outlived a kill");
    ageTemporaryFiles();
}

// The program removes only temporary files that nobody has written to for a minute.
void KilledStudio::ageTemporaryFiles() const
{
    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2);
    for (const auto& entry :
        std::filesystem::recursive_directory_iterator(m_studio.studio.home())) {
        const std::string ending = entry.path().extension().string();
        if (entry.is_regular_file() && ending.size() == TemporaryEnding.size())
            std::filesystem::last_write_time(entry.path(), longAgo);
    }
}

void KilledStudio::startAgain()
{
    m_studio.startKestrel();
    m_live = storedSet();
    // Nobody else reads what they print, and they wait when nobody does.
    static_cast<void>(m_studio.workstation->linesUntilQuiet(milliseconds(0)));
    static_cast<void>(m_studio.console->linesUntilQuiet(milliseconds(0)));
}

// Returns when the program has been told to save.
void KilledStudio::save()
{
    // A second start opens the setup window.
    check(m_studio.studio.start("kestrel")->wait(ProgramTimeout) == 0, "no second start");
    m_setup.person.waitUntilShown(m_setup.Title);
    m_setup.openSaveSheet();
    const bool isReplacing = std::filesystem::exists(savedFile());
    // The list of completions, which comes up at any time, takes a Return for itself.
    for (int attempt = 0; attempt == 0 || !isAnswered(); ++attempt) {
        check(attempt < 5, "the program does not take the name of a file to save");
        m_setup.person.press("ctrl+a");
        m_setup.person.type(savedFile().string());
        m_setup.person.press("Return");
    }
    if (isReplacing)
        m_setup.person.press("alt+y");
}

// True when the sheet has gone, or when the question whether to replace the file, which has the
// title of the sheet, comes up.
bool KilledStudio::isAnswered() const
{
    return stage::comesTrue(
        [this] {
            const auto windows = stage::shownWindows(m_studio.studio.displayName(), "kestrel");
            return std::count_if(windows.begin(), windows.end(), [](const auto& window) {
                return window.title == stage::SetupWindowOnScreen::SaveTitle;
            }) != 1;
        },
        QuestionTimeout);
}

RunningStudio::Process KilledStudio::openOtherSet()
{
    const auto file = m_studio.studio.home() / (otherSet() + Extension);
    return m_studio.studio.start("kestrel", { file.string() });
}

std::string KilledStudio::otherSet() const
{
    return m_live == FirstSet ? SecondSet : FirstSet;
}

std::string KilledStudio::storedSet() const
{
    FileDefaultsStore defaults(QString::fromStdString(
        (m_studio.studio.configFolder() / "com.holvik.kestrel.plist").string()));
    StoredAssignments stored(defaults);
    stored.setupShortcutKey();
    const auto name = NamedSet::nameOf(*stored.myUserAssignFile());
    check(name.has_value(), "the defaults hold neither the old set nor the new one");
    return *name;
}

std::string KilledStudio::savedSet() const
{
    const auto name = NamedSet::nameIn(savedFile());
    check(name.has_value(), "the saved file holds neither the old set nor the new one");
    return *name;
}

std::filesystem::path KilledStudio::savedFile() const
{
    return m_studio.studio.home() / "saved" / ("set" + Extension);
}

long KilledStudio::files() const
{
    const std::filesystem::recursive_directory_iterator all(m_studio.studio.home());
    return std::count_if(
        begin(all), end(all), [](const auto& entry) { return !entry.is_directory(); });
}

} // namespace kestrel::test
