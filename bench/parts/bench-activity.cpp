// What recording one event costs, after the event was handled. Nothing of it may allocate.

#include "app/ActivityRecorder.h"
#include "link/MIDIMessage.h"
#include "tools/allocations/CountedAllocations.h"

#include <benchmark/benchmark.h>

#include <array>

namespace kestrel {
namespace {

constexpr std::array<std::uint8_t, 5> KeyPress { 0xB0, 0x0F, 0x40, 0x2F, 0x45 };
constexpr std::array<std::uint8_t, 19> ZoneText { 0xF0, 0, 0, 0x66, 5, 0, 0x12, 2, 'F', 'R', 'E',
    'Q', ' ', ' ', ' ', ' ', ' ', ' ', 0xF7 };

void record(benchmark::State& state, std::span<const std::uint8_t> packet, auto note)
{
    const SteadyClock clock;
    ActivityRecorder recorder(clock);
    MIDIMessage message;
    message.setReadData(packet);
    const long before = allocations();
    for (auto _ : state) {
        note(recorder);
        recorder.record(message);
    }
    state.counters["allocations/event"]
        = static_cast<double>(allocations() - before) / static_cast<double>(state.iterations());
}

void recordDisplayText(benchmark::State& state)
{
    record(state, ZoneText, [](ActivityRecorder& recorder) { recorder.noteShown(); });
}
BENCHMARK(recordDisplayText);

void recordTypedKey(benchmark::State& state)
{
    Keystroke stroke { Keystroke::Outcome::Typed, {} };
    stroke.text.appendShortcut(Modifier::Command, u"S");
    record(state, KeyPress, [&stroke](ActivityRecorder& recorder) { recorder.noteKey(stroke); });
}
BENCHMARK(recordTypedKey);

// The words of the outcome, which the poster makes after it has posted.
void tellShortcut(benchmark::State& state)
{
    const long before = allocations();
    for (auto _ : state) {
        KeystrokeText text;
        text.appendShortcut(Modifier::Command, u"S");
        benchmark::DoNotOptimize(text);
    }
    state.counters["allocations/event"]
        = static_cast<double>(allocations() - before) / static_cast<double>(state.iterations());
}
BENCHMARK(tellShortcut);

} // namespace
} // namespace kestrel

BENCHMARK_MAIN();
