#include "bench/latency/Clock.h"
#include "bench/latency/Distribution.h"
#include "bench/latency/ReplyCounter.h"
#include "bench/latency/Runs.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>

namespace kestrel::bench {

namespace {
constexpr std::int64_t KeyLostAfter = 300'000'000; // ns from the order on, JACK's cycle included
constexpr std::size_t PressesInASpell = 20;
constexpr std::chrono::milliseconds Settling { 150 }; // after a flood begins or ends
constexpr std::size_t CountedStrokes = 48; // strokes whose round trips are counted

struct PressOutcome {
    Distribution press;
    Distribution release;
    std::size_t presses = 0;
    std::size_t lost = 0; // lost presses and releases
    std::size_t outOfOrder = 0; // key events other than the awaited one
    std::size_t overruns = 0; // overruns of JACK
};

using Random = std::mt19937;

void pause(Random& random)
{
    std::uniform_int_distribution<int> microseconds(500, 3000);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
}

void measureStroke(Stage& stage, const Stroke& stroke, PressForm form, PressOutcome& outcome)
{
    stage.console().send(stroke, form);
    const auto deadline = monotonicNanoseconds() + KeyLostAfter;
    for (;;) {
        const auto key = stage.window().nextKey(deadline);
        if (!key) {
            ++outcome.lost;
            stage.window().letGoOfAllKeys(); // a lost release must not spoil the next press
            return;
        }
        const auto sent = stage.console().sentAt();
        if (key->stroke == stroke && key->time >= sent) {
            auto& times = stroke.direction == Direction::Press ? outcome.press : outcome.release;
            times.add(key->time - sent);
            return;
        }
        ++outcome.outOfOrder;
    }
}

void measurePresses(
    Stage& stage, PressForm form, std::size_t count, Random& random, PressOutcome& outcome)
{
    const auto overrunsBefore = stage.console().overruns();
    std::uniform_int_distribution<std::size_t> buttons(0, Buttons.size() - 1);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t button = buttons(random);
        for (const auto direction : { Direction::Press, Direction::Release }) {
            measureStroke(stage, { button, direction }, form, outcome);
            pause(random);
        }
        ++outcome.presses;
    }
    stage.window().letGoOfAllKeys();
    outcome.overruns += stage.console().overruns() - overrunsBefore;
}

void flood(Stage& stage, int packetsPerSecond)
{
    stage.console().setFlood(packetsPerSecond);
    std::this_thread::sleep_for(Settling);
}

// Quiet and flooded presses alternate in short spells, so that both see the machine in the same
// mood.
void measureRound(Stage& stage, const CandidateKind& kind, const Options& options, Random& random,
    PressOutcome& quiet, PressOutcome& busy)
{
    const bool alternates = options.floodPerSecond > 0;
    const std::size_t spell = alternates ? PressesInASpell : options.pressesPerRound;
    for (std::size_t done = 0; done < options.pressesPerRound; done += spell) {
        const std::size_t count = std::min(spell, options.pressesPerRound - done);
        measurePresses(stage, options.form, count, random, quiet);
        if (!alternates)
            continue;
        flood(stage, options.floodPerSecond);
        measurePresses(stage, options.form, count, random, busy);
        flood(stage, 0);
    }
    if (alternates && kind.showsPanel && !stage.panelShowsText())
        throw std::runtime_error(kind.name + " did not paint what came");
}

double roundTripsPerStroke(Stage& stage, ReplyCounter& counter)
{
    counter.start();
    for (std::size_t n = 0; n < CountedStrokes; ++n) {
        stage.console().send(strokeOfStream(n), PressForm::TwoPackets);
        static_cast<void>(stage.window().nextKey(monotonicNanoseconds() + KeyLostAfter));
    }
    const auto replies = counter.stop();
    stage.window().letGoOfAllKeys();
    return static_cast<double>(replies) / CountedStrokes;
}

Row pressRow(const std::string& name, const PressOutcome& outcome, std::optional<double> roundTrips)
{
    return { name,
        { { "presses", static_cast<double>(outcome.presses) },
            { "p50 µs", outcome.press.microsecondsAt(50) },
            { "p90 µs", outcome.press.microsecondsAt(90) },
            { "p99 µs", outcome.press.microsecondsAt(99) },
            { "max µs", outcome.press.microsecondsAt(100) },
            { "release p50 µs", outcome.release.microsecondsAt(50) },
            { "lost", static_cast<double>(outcome.lost) },
            { "out of order", static_cast<double>(outcome.outOfOrder) },
            { "JACK overruns", static_cast<double>(outcome.overruns) },
            { "X round trips each", roundTrips, 1 } } };
}

std::string flooded(const CandidateKind& kind, const Options& options)
{
    return kind.name + ", " + std::to_string(options.floodPerSecond) + " display packets/s";
}
// Adds to each flooded row its median divided by that of the quiet row right before it. The ratio
// shows what the flood does to a candidate.
void addQuietRatios(Table& table)
{
    std::optional<double> quiet;
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        const auto median = figureOf(table.rows[i], "p50 µs");
        if (i % 2 == 0)
            quiet = median;
        Figure ratio { "p50 to quiet", {}, 2 };
        if (median && quiet && *quiet > 0)
            ratio.value = *median / *quiet;
        table.rows[i].figures.push_back(ratio);
    }
}
} // namespace

Table pressRun(Stage& stage, const std::vector<CandidateKind>& kinds, const Options& options)
{
    Random random(options.seed);
    std::vector<PressOutcome> quiet(kinds.size());
    std::vector<PressOutcome> busy(kinds.size());
    std::vector<std::optional<double>> roundTrips(kinds.size());
    std::vector<std::size_t> order(kinds.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    for (std::size_t round = 0; round < options.rounds; ++round) {
        std::shuffle(order.begin(), order.end(), random);
        for (const std::size_t i : order) {
            std::optional<ReplyCounter> counter;
            if (round + 1 == options.rounds)
                counter.emplace(stage.display()); // counts only clients that connect later
            const Candidate candidate(stage, kinds[i]);
            measureRound(stage, kinds[i], options, random, quiet[i], busy[i]);
            if (counter)
                roundTrips[i] = roundTripsPerStroke(stage, *counter);
        }
    }
    Table table { "From MIDI packet to key event, one press at a time, "
            + std::string(options.form == PressForm::TwoPackets ? "two packets" : "one packet")
            + " a press",
        {} };
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        table.rows.push_back(pressRow(kinds[i].name, quiet[i], roundTrips[i]));
        if (options.floodPerSecond > 0)
            table.rows.push_back(pressRow(flooded(kinds[i], options), busy[i], {}));
    }
    addRatios(table, FloorName, { "p50 µs", "p99 µs" });
    if (options.floodPerSecond > 0)
        addQuietRatios(table);
    return table;
}

} // namespace kestrel::bench
