#pragma once

#include "bench/latency/Options.h"
#include "bench/latency/Stage.h"
#include "tools/stage/ChildProcess.h"
#include "tools/stage/TemporaryFolder.h"

#include <string>
#include <vector>

namespace kestrel::bench {

// A program that is measured, and how it is started.
struct CandidateKind {
    std::string name;
    std::vector<std::string> command;
    bool connectsItself = false; // the utility does so once it sees the workstation run
    // The panel is opened from the icon in the tray before the measurement.
    bool showsPanel = false;
    bool showsActivity = false; // likewise its window of events
};

// The name of the row whose figures divide those of all other rows.
inline constexpr const char* FloorName = "floor --watch-front";
// The same program, late by 20 µs, with which the bench checks itself.
inline constexpr const char* DelayedFloorName = "floor --delay-us 20";

// The candidates that the options name. A candidate whose program does not exist is left out, with
// a line on standard output. Throws std::runtime_error when a name is unknown or no candidate is
// left.
[[nodiscard]] std::vector<CandidateKind> candidateKinds(const Options& options);

// Assigns keys to the utility's buttons in the stage's throw-away settings. Throws
// std::runtime_error when that fails.
void assignKeys(const Stage& stage, const Options& options);

// A running candidate: started, connected, answering heartbeats and posting keys. Its program ends
// with this object, so that only one candidate is ever in the JACK graph.
class Candidate {
public:
    // Throws std::runtime_error with a text about what the candidate fails to do.
    Candidate(Stage& stage, const CandidateKind& kind);
    ~Candidate();
    Candidate(const Candidate&) = delete;
    Candidate& operator=(const Candidate&) = delete;

    [[nodiscard]] pid_t pid() const { return m_process.pid(); }

private:
    void waitForAnswer();
    void warmUp();

    [[nodiscard]] stage::ChildProcess::Environment environment() const;

    Stage& m_stage;
    const CandidateKind& m_kind;
    // Another version of the utility may take a lock file of this one for a running program.
    stage::TemporaryFolder m_runtimeFolder { "/dev/shm" }; // in memory, as on a desktop
    stage::ChildProcess m_process;
};

} // namespace kestrel::bench
