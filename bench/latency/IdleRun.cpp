#include "bench/latency/Clock.h"
#include "bench/latency/Interruption.h"
#include "bench/latency/Runs.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace kestrel::bench {

namespace {
// Returns the number after `label` at the start of a line of a /proc file, or 0 when there is none.
double numberIn(const std::filesystem::path& file, const std::string& label)
{
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(label))
            return std::stod(line.substr(label.size()));
    }
    return 0;
}

// The work of all threads of a process since it started.
struct Work {
    double wakeUps = 0; // how often a thread has gone to sleep and been woken
    double milliseconds = 0; // time on a core
};

Work workOf(pid_t pid)
{
    Work work;
    const auto tasks = std::filesystem::path("/proc") / std::to_string(pid) / "task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        work.wakeUps += numberIn(task.path() / "status", "voluntary_ctxt_switches:");
        // The first number is in ns.
        work.milliseconds += numberIn(task.path() / "schedstat", "") / 1e6;
    }
    return work;
}

double privateKibibytes(pid_t pid)
{
    const auto file = std::filesystem::path("/proc") / std::to_string(pid) / "smaps_rollup";
    return numberIn(file, "Private_Clean:") + numberIn(file, "Private_Dirty:");
}

struct IdleOutcome {
    double seconds = 0;
    Work work;
    double cycles = 0;
    double privateKibibytes = 0;
};

void measureRound(Stage& stage, const CandidateKind& kind, double seconds, IdleOutcome& outcome)
{
    // Each round starts the candidate anew. A process often keeps its cores while it lives, and a
    // thread that another core wakes costs up to three times as much.
    const Candidate candidate(stage, kind);
    const auto start = monotonicNanoseconds();
    const Work before = workOf(candidate.pid());
    const auto cyclesBefore = stage.console().cycles();
    while (static_cast<double>(monotonicNanoseconds() - start) < seconds * 1e9) {
        Interruption::check();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    const Work after = workOf(candidate.pid());
    outcome.seconds += static_cast<double>(monotonicNanoseconds() - start) / 1e9;
    outcome.work.wakeUps += after.wakeUps - before.wakeUps;
    outcome.work.milliseconds += after.milliseconds - before.milliseconds;
    outcome.cycles += static_cast<double>(stage.console().cycles() - cyclesBefore);
    outcome.privateKibibytes = privateKibibytes(candidate.pid());
}

Row idleRow(const std::string& name, const IdleOutcome& outcome)
{
    const double wakeUps = outcome.work.wakeUps / outcome.seconds;
    const double cycles = outcome.cycles / outcome.seconds;
    return { name,
        { { "wake-ups/s", wakeUps, 1 }, { "JACK cycles/s", cycles, 1 },
            { "beyond the cycles/s", wakeUps - cycles, 1 },
            { "CPU ms/s", outcome.work.milliseconds / outcome.seconds, 2 },
            { "µs a cycle", outcome.work.milliseconds * 1000 / outcome.cycles, 2 },
            { "private KiB", outcome.privateKibibytes } } };
}
} // namespace

Table idleRun(Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options)
{
    const double seconds = double(options.idleSeconds) / double(options.rounds);
    std::vector<IdleOutcome> outcomes(kinds.size());
    for (std::size_t round = 0; round < options.rounds; ++round) {
        for (std::size_t i = 0; i < kinds.size(); ++i)
            measureRound(stage, kinds[i], seconds, outcomes[i]);
    }
    Table table {
        "Idle, a heartbeat each second, for " + std::to_string(options.idleSeconds) + " s", {}
    };
    for (std::size_t i = 0; i < kinds.size(); ++i)
        table.rows.push_back(idleRow(kinds[i].name, outcomes[i]));
    addRatios(table, FloorName, { "CPU ms/s" });
    return table;
}

} // namespace kestrel::bench
