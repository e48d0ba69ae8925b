#include "link/MIDIMessage.h"
#include "link/MessageDispatcher.h"
#include "tools/allocations/CountedAllocations.h"

#include <benchmark/benchmark.h>

#include <array>

namespace kestrel {
namespace {

using Packet = std::array<std::uint8_t, 5>;

class Nowhere final : public MessageDispatcher::Destinations {
public:
    void answerHeartbeat() override { ++calls; }
    void redrawLCDdisplay(const MIDIMessage&) override { ++calls; }
    void redrawDSParea(const MIDIMessage&) override { ++calls; }
    void eventKeyPost(unsigned int) override { ++calls; }

    long calls = 0;
};

constexpr Packet KeyPress { 0xB0, 0x0F, 0x40, 0x2F, 0x45 };

void classifyPacket(benchmark::State& state)
{
    Nowhere nowhere;
    MessageDispatcher dispatcher(nowhere);
    MIDIMessage message;
    message.setReadData(KeyPress);
    for (auto _ : state)
        dispatcher.receiveMessage(message);
    benchmark::DoNotOptimize(nowhere.calls);
}
BENCHMARK(classifyPacket);

// From the bytes of the read callback to the destination.
void packetToDestination(benchmark::State& state)
{
    Nowhere nowhere;
    MessageDispatcher dispatcher(nowhere);
    const long before = allocations();
    for (auto _ : state) {
        MIDIMessage message(1);
        message.readPacket({ 0, KeyPress }, KeyPress.size());
        dispatcher.receiveMessage(message);
    }
    state.counters["allocations/packet"]
        = static_cast<double>(allocations() - before) / static_cast<double>(state.iterations());
    benchmark::DoNotOptimize(nowhere.calls);
}
BENCHMARK(packetToDestination);

} // namespace
} // namespace kestrel

BENCHMARK_MAIN();
