#include "bench/latency/Candidate.h"

#include "bench/latency/Clock.h"
#include "bench/latency/Interruption.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <stdexcept>
#include <thread>

namespace kestrel::bench {

namespace {
using std::chrono::milliseconds;

constexpr std::int64_t Second = 1'000'000'000; // ns
constexpr std::int64_t AnswerTimeout
    = 20 * Second; // the utility opens the link at its second 5-second tick

std::vector<CandidateKind> allKinds(const Options& options)
{
    const auto floor = (options.programs / "floor-keys").string();
    std::vector<CandidateKind> kinds { { "floor", { floor } },
        { FloorName, { floor, "--watch-front" } },
        { "floor --ask-front", { floor, "--ask-front" } },
        { DelayedFloorName, { floor, "--watch-front", "--delay-us", "20" } },
        { "xdotool", { (options.programs / "spawn-keys").string() } },
        { "kestrel", { options.kestrel.string() }, true },
        { "kestrel with panel", { options.kestrel.string() }, true, true },
        { "kestrel with activity", { options.kestrel.string() }, true, false, true } };
    if (!options.baseline.empty())
        kinds.push_back({ "baseline", { options.baseline.string() }, true });
    return kinds;
}
} // namespace

std::vector<CandidateKind> candidateKinds(const Options& options)
{
    std::vector<CandidateKind> kinds;
    const auto all = allKinds(options);
    for (const auto& name : options.candidates) {
        const auto kind = std::find_if(
            all.begin(), all.end(), [&](const auto& known) { return known.name == name; });
        if (kind == all.end())
            throw std::runtime_error("there is no candidate named " + name);
        if (!std::filesystem::exists(kind->command.front()))
            std::cout << name << ": skipped, there is no program " << kind->command.front() << '\n';
        else if (kind->connectsItself && !std::filesystem::exists(options.assign))
            std::cout << name << ": skipped, there is no program " << options.assign.string()
                      << '\n';
        else
            kinds.push_back(*kind);
    }
    if (kinds.empty())
        throw std::runtime_error("there is no candidate to measure");
    return kinds;
}

void assignKeys(const Stage& stage, const Options& options)
{
    for (std::size_t i = 0; i < Buttons.size(); ++i) {
        const std::string key(1, Buttons[i].key);
        stage::ChildProcess assign(
            { options.assign.string(), "assign", std::to_string(i + 1), key }, stage.environment());
        if (assign.wait(milliseconds(10000)) != 0)
            throw std::runtime_error(options.assign.string() + " does not put key " + key
                + " on button " + std::to_string(i + 1));
    }
}

Candidate::Candidate(Stage& stage, const CandidateKind& kind)
    : m_stage(stage)
    , m_kind(kind)
    , m_process(kind.command, environment())
{
    if (!m_kind.connectsItself) {
        const auto ready = m_process.waitForLineWith("ready ", milliseconds(10000));
        if (!ready)
            throw std::runtime_error(m_kind.name + " does not start");
        m_stage.console().connectReference(ready->substr(ready->find(' ') + 1));
    }
    waitForAnswer();
    if (m_kind.showsPanel)
        m_stage.showPanel();
    if (m_kind.showsActivity)
        m_stage.showActivity();
    m_stage.console().setHeartbeatEachSecond(true);
    warmUp();
}

stage::ChildProcess::Environment Candidate::environment() const
{
    auto environment = m_stage.environment();
    environment["XDG_RUNTIME_DIR"] = m_runtimeFolder.path().string();
    return environment;
}

Candidate::~Candidate()
{
    m_stage.console().setHeartbeatEachSecond(false);
    m_stage.console().setFlood(0);
}

void Candidate::waitForAnswer()
{
    Console& console = m_stage.console();
    const auto before = console.answers();
    for (const auto end = monotonicNanoseconds() + AnswerTimeout; console.answers() == before;) {
        Interruption::check();
        if (const auto code = m_process.wait(milliseconds(0)))
            throw std::runtime_error(
                m_kind.name + " ended with exit code " + std::to_string(*code));
        if (monotonicNanoseconds() > end)
            throw std::runtime_error(m_kind.name + " does not answer the heartbeat");
        console.sendHeartbeat();
        std::this_thread::sleep_for(milliseconds(50));
    }
}

void Candidate::warmUp()
{
    constexpr std::size_t Strokes = 48;
    m_stage.window().letGoOfAllKeys();
    bool arrived = false;
    for (std::size_t n = 0; n < Strokes; ++n) {
        m_stage.console().send(strokeOfStream(n), PressForm::TwoPackets);
        arrived |= m_stage.window().nextKey(monotonicNanoseconds() + Second / 4).has_value();
    }
    m_stage.window().letGoOfAllKeys();
    if (!arrived)
        throw std::runtime_error(m_kind.name + " answers heartbeats but posts no key");
}

} // namespace kestrel::bench
