#include "bench/latency/Clock.h"
#include "bench/latency/Distribution.h"
#include "bench/latency/Runs.h"
#include "bench/latency/StrokeMatcher.h"

#include <algorithm>
#include <optional>
#include <random>
#include <string>

namespace kestrel::bench {

namespace {
constexpr std::int64_t OneSecond = 1'000'000'000; // ns
constexpr std::int64_t Patience = 2 * OneSecond; // longest wait for the last keys after the stream

struct RateOutcome {
    StrokeMatcher matcher;
    Distribution press;
    std::size_t sent = 0;
    std::size_t overruns = 0; // overruns of JACK
    int stuck = 0; // keys that are down at the end
};

void note(const WorkstationWindow::KeyEvent& key, const Console& console, RateOutcome& outcome)
{
    const auto number = outcome.matcher.receive(key.stroke, console.streamSent());
    if (number && key.stroke.direction == Direction::Press)
        outcome.press.add(key.time - console.streamTime(*number));
}

RateOutcome measure(Stage& stage, const CandidateKind& kind, const Options& options)
{
    const Candidate candidate(stage, kind);
    Console& console = stage.console();
    RateOutcome outcome;
    const auto overrunsBefore = console.overruns();
    const auto strokes = static_cast<std::size_t>(options.strokesPerSecond)
        * static_cast<std::size_t>(options.streamSeconds);
    const auto start = monotonicNanoseconds();
    console.startStream(strokes, options.strokesPerSecond);
    const auto latest = start + (options.streamSeconds + 5) * OneSecond;
    std::optional<std::int64_t> end;
    while (!end || monotonicNanoseconds() < *end) {
        if (outcome.matcher.received() == strokes)
            break;
        if (const auto key = stage.window().nextKey(monotonicNanoseconds() + OneSecond / 10))
            note(*key, console, outcome);
        if (!end && (console.streamSent() == strokes || monotonicNanoseconds() > latest))
            end = monotonicNanoseconds() + Patience;
    }
    outcome.sent = console.streamSent();
    outcome.overruns = console.overruns() - overrunsBefore;
    outcome.stuck = stage.window().keysDown();
    return outcome;
}

Row rateRow(const std::string& name, const RateOutcome& outcome)
{
    const auto sent = static_cast<double>(outcome.sent);
    const auto lost = sent - static_cast<double>(outcome.matcher.received());
    return { name,
        { { "strokes", sent }, { "lost", lost }, { "lost %", sent > 0 ? 100 * lost / sent : 0, 3 },
            { "out of order", static_cast<double>(outcome.matcher.outOfOrder()) },
            { "unexpected", static_cast<double>(outcome.matcher.unexpected()) },
            { "stuck keys", static_cast<double>(outcome.stuck) },
            { "JACK overruns", static_cast<double>(outcome.overruns) },
            { "p50 µs", outcome.press.microsecondsAt(50) },
            { "p99 µs", outcome.press.microsecondsAt(99) },
            { "max µs", outcome.press.microsecondsAt(100) } } };
}
} // namespace

Table rateRun(Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options)
{
    std::vector<std::size_t> order(kinds.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::mt19937 random(options.seed);
    std::shuffle(order.begin(), order.end(), random);
    std::vector<RateOutcome> outcomes(kinds.size());
    for (const std::size_t i : order) {
        outcomes[i] = measure(stage, kinds[i], options);
        stage.window().letGoOfAllKeys();
    }
    Table table { "Steady stream, " + std::to_string(options.strokesPerSecond / 2)
            + " presses and releases a second for " + std::to_string(options.streamSeconds) + " s",
        {} };
    for (std::size_t i = 0; i < kinds.size(); ++i)
        table.rows.push_back(rateRow(kinds[i].name, outcomes[i]));
    return table;
}

} // namespace kestrel::bench
