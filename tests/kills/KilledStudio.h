#pragma once

#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/SetupWindowOnScreen.h"
#include "tools/stage/TemporaryFolder.h"

#include <filesystem>
#include <random>
#include <string>

namespace kestrel::test {

// A studio in which the real program is killed again and again. Each kill hits it at a random
// moment of one activity. Then the program is started again, and whatever the kill must not harm is
// examined.
class KilledStudio {
public:
    enum class Activity { Saving, Storing, Holding };
    // What a kill has left. Neither answer is a fault.
    struct Remains {
        bool isContentNew = false; // of the file or the defaults that were being written
        bool isKeyDown = false;
    };

    // Throws std::runtime_error when a program does not start.
    explicit KilledStudio(std::mt19937& random);

    // Throws std::runtime_error that names the damage when the kill has done any.
    Remains killDuring(Activity activity);

    // How many more files there are than after an orderly run.
    [[nodiscard]] long leftovers() const;

private:
    void runInOrder();
    void killWhileSaving();
    void killWhileStoring();
    void killWhileHolding();
    void kill();
    void ageTemporaryFiles() const;
    void startAgain();

    void save();
    [[nodiscard]] bool isAnswered() const;
    // Gives the running program the set that is not live.
    [[nodiscard]] RunningStudio::Process openOtherSet();
    [[nodiscard]] std::string otherSet() const;
    // The name of the set in the defaults. Throws std::runtime_error when they hold no whole set.
    [[nodiscard]] std::string storedSet() const;
    [[nodiscard]] std::string savedSet() const; // the same for the saved file
    [[nodiscard]] std::filesystem::path savedFile() const;
    [[nodiscard]] long files() const;

    std::mt19937& m_random;
    RunningStudio m_studio { stage::Studio::Options {
        .cycles = stage::PrivateJackServer::Cycles::Independent } };
    stage::TemporaryFolder m_elsewhere; // the current folder of all programs
    stage::SetupWindowOnScreen m_setup { m_studio.studio };
    std::string m_live; // the name of the set with which the program has started
    long m_filesInOrder = 0;
};

} // namespace kestrel::test
