#pragma once

#include "bench/latency/Candidate.h"
#include "bench/latency/Options.h"
#include "bench/latency/Report.h"
#include "bench/latency/Stage.h"

#include <vector>

namespace kestrel::bench {

// What can be measured, each as one table with a row a candidate. Candidates take turns, a round
// each, in an order shuffled anew for every round; what a candidate gave is pooled over its rounds.

// One press at a time, from the packet being written to the key event being received.
[[nodiscard]] Table pressRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

// A steady stream of presses, whatever becomes of them.
[[nodiscard]] Table rateRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

// From the heartbeat being written to its answer being read.
[[nodiscard]] Table heartbeatRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

// What a candidate costs while nothing is pressed.
[[nodiscard]] Table idleRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

} // namespace kestrel::bench
