#pragma once

#include "bench/latency/Options.h"
#include "bench/latency/Stage.h"
#include "tools/stage/ChildProcess.h"

#include <string>
#include <vector>

namespace kestrel::bench {

// A program that is measured, and how it is started.
struct CandidateKind {
    std::string name;
    std::vector<std::string> command;
    bool connectsItself = false; // as the utility does, once it sees the workstation run
    bool showsPanel = false; // opened from the icon in the tray before anything is measured
};

// The name of the row that all others are divided by.
inline constexpr const char* FloorName = "floor --watch-front";

// Those that the options name. One whose program does not exist is left out, with a line on
// standard output; throws std::runtime_error when a name is unknown or none is left.
[[nodiscard]] std::vector<CandidateKind> candidateKinds(const Options& options);

// Gives the utility's buttons their keys, in the stage's throw-away settings; throws
// std::runtime_error when that fails.
void assignKeys(const Stage& stage, const Options& options);

// A candidate at work: started, connected, answering heartbeats and posting keys. It ends with its
// owner, so that only one is ever in the JACK graph.
class Candidate {
public:
    // Throws std::runtime_error saying what the candidate does not do.
    Candidate(Stage& stage, const CandidateKind& kind);
    ~Candidate();
    Candidate(const Candidate&) = delete;
    Candidate& operator=(const Candidate&) = delete;

    [[nodiscard]] pid_t pid() const { return m_process.pid(); }

private:
    void waitForAnswer();
    void warmUp();

    Stage& m_stage;
    const CandidateKind& m_kind;
    stage::ChildProcess m_process;
};

} // namespace kestrel::bench
