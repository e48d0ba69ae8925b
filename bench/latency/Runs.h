#pragma once

#include "bench/latency/Candidate.h"
#include "bench/latency/Options.h"
#include "bench/latency/Report.h"
#include "bench/latency/Stage.h"

#include <vector>

namespace kestrel::bench {

// Each function measures one thing and returns a table with a row per candidate. The candidates
// take turns, and the results of a candidate are pooled over its rounds. All runs except idleRun()
// shuffle the order of the candidates.

// Measures one press at a time, from writing the packet to receiving the key event.
[[nodiscard]] Table pressRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

// Sends a steady stream of presses without waiting for their key events, and counts losses.
[[nodiscard]] Table rateRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

// Measures the time from writing a heartbeat to reading its answer.
[[nodiscard]] Table heartbeatRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

// Measures the wake-ups, processor time and memory of a candidate while nothing is pressed.
[[nodiscard]] Table idleRun(
    Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options);

} // namespace kestrel::bench
