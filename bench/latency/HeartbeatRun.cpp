#include "bench/latency/AnswerListener.h"
#include "bench/latency/Clock.h"
#include "bench/latency/Distribution.h"
#include "bench/latency/Runs.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <thread>

namespace kestrel::bench {

namespace {
constexpr std::int64_t AnswerLostAfter = 500'000'000; // ns

struct HeartbeatOutcome {
    Distribution atListener;
    Distribution atConsole;
    std::size_t sent = 0;
    std::size_t lost = 0;
};

void measureHeartbeat(Console& console, const AnswerListener& listener, HeartbeatOutcome& outcome)
{
    const auto atConsole = console.answers();
    const auto atListener = listener.answers();
    const auto sent = console.sendHeartbeat();
    ++outcome.sent;
    while (console.answers() == atConsole || listener.answers() == atListener) {
        if (monotonicNanoseconds() > sent + AnswerLostAfter) {
            ++outcome.lost;
            return;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    outcome.atConsole.add(console.lastAnswerTime() - sent);
    outcome.atListener.add(listener.lastAnswerTime() - sent);
}

void measureRound(Stage& stage, const CandidateKind& kind, const Options& options,
    std::mt19937& random, HeartbeatOutcome& outcome)
{
    const Candidate candidate(stage, kind);
    Console& console = stage.console();
    console.setHeartbeatEachSecond(false);
    const AnswerListener listener(stage.jackServer(), console.answeringPort());
    std::uniform_int_distribution<int> gap(1000, 6000); // µs
    for (std::size_t i = 0; i < options.pressesPerRound; ++i) {
        std::this_thread::sleep_for(std::chrono::microseconds(gap(random)));
        measureHeartbeat(console, listener, outcome);
    }
}

Row heartbeatRow(const std::string& name, const HeartbeatOutcome& outcome)
{
    return { name,
        { { "heartbeats", static_cast<double>(outcome.sent) },
            { "p50 µs", outcome.atListener.microsecondsAt(50) },
            { "p99 µs", outcome.atListener.microsecondsAt(99) },
            { "max µs", outcome.atListener.microsecondsAt(100) },
            { "console p50 µs", outcome.atConsole.microsecondsAt(50) },
            { "console p99 µs", outcome.atConsole.microsecondsAt(99) },
            { "lost", static_cast<double>(outcome.lost) } } };
}
} // namespace

Table heartbeatRun(Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options)
{
    std::vector<std::size_t> order(kinds.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::mt19937 random(options.seed);
    std::vector<HeartbeatOutcome> outcomes(kinds.size());
    for (std::size_t round = 0; round < options.rounds; ++round) {
        std::shuffle(order.begin(), order.end(), random);
        for (const std::size_t i : order)
            measureRound(stage, kinds[i], options, random, outcomes[i]);
    }
    Table table { "From heartbeat to answer, read after the candidate and at the console", {} };
    for (std::size_t i = 0; i < kinds.size(); ++i)
        table.rows.push_back(heartbeatRow(kinds[i].name, outcomes[i]));
    addRatios(table, FloorName, { "p50 µs", "p99 µs" });
    return table;
}

} // namespace kestrel::bench
