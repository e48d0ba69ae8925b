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
// The number after `label` at the start of a line of a /proc file; 0 when there is none.
double numberIn(const std::filesystem::path& file, const std::string& label)
{
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(label))
            return std::stod(line.substr(label.size()));
    }
    return 0;
}

// How often any thread of the process has gone to sleep, and so been woken, since it started.
double wakeUps(pid_t pid)
{
    double sum = 0;
    const auto tasks = std::filesystem::path("/proc") / std::to_string(pid) / "task";
    for (const auto& task : std::filesystem::directory_iterator(tasks))
        sum += numberIn(task.path() / "status", "voluntary_ctxt_switches:");
    return sum;
}

double privateKibibytes(pid_t pid)
{
    const auto file = std::filesystem::path("/proc") / std::to_string(pid) / "smaps_rollup";
    return numberIn(file, "Private_Clean:") + numberIn(file, "Private_Dirty:");
}

Row measure(Stage& stage, const CandidateKind& kind, const Options& options)
{
    const Candidate candidate(stage, kind);
    const auto start = monotonicNanoseconds();
    const double wakeUpsBefore = wakeUps(candidate.pid());
    const auto cyclesBefore = stage.console().cycles();
    while (monotonicNanoseconds() < start + std::int64_t { options.idleSeconds } * 1'000'000'000) {
        Interruption::check();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    const double perSecond = 1e9 / static_cast<double>(monotonicNanoseconds() - start);
    const double woken = (wakeUps(candidate.pid()) - wakeUpsBefore) * perSecond;
    const double cycles = static_cast<double>(stage.console().cycles() - cyclesBefore) * perSecond;
    return { kind.name,
        { { "wake-ups/s", woken, 1 }, { "JACK cycles/s", cycles, 1 },
            { "beyond the cycles/s", woken - cycles, 1 },
            { "private KiB", privateKibibytes(candidate.pid()) } } };
}
} // namespace

Table idleRun(Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options)
{
    Table table {
        "Idle, a heartbeat each second, for " + std::to_string(options.idleSeconds) + " s", {}
    };
    for (const auto& kind : kinds)
        table.rows.push_back(measure(stage, kind, options));
    return table;
}

} // namespace kestrel::bench
