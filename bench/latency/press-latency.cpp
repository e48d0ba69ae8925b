// Measures the time from a console's MIDI packet to the workstation's key event, for the utility
// and for the reference programs that it is compared with. One process plays both console and
// workstation, so that one clock takes both times. It runs its own X and JACK servers.

#include "bench/latency/Candidate.h"
#include "bench/latency/Interruption.h"
#include "bench/latency/Options.h"
#include "bench/latency/Report.h"
#include "bench/latency/Runs.h"
#include "bench/latency/Stage.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>

namespace {
using namespace kestrel::bench;

struct Modes {
    bool press = false;
    bool rate = false;
    bool heartbeat = false;
    bool idle = false;
    bool selfCheck = false;
};

void addModes(CLI::App& app, Modes& modes)
{
    app.add_flag("--press", modes.press, "one press at a time (the default)");
    app.add_flag("--rate", modes.rate, "a steady stream of presses");
    app.add_flag("--heartbeat", modes.heartbeat, "the answer to the heartbeat");
    app.add_flag("--self-check", modes.selfCheck,
        "measure a floor that is late by 20 µs too, and fail unless it is seen to be");
}

void addOptions(CLI::App& app, Options& options, bool& onePacket)
{
    app.add_option("--rounds", options.rounds, "rounds of each candidate")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    app.add_option("--presses", options.pressesPerRound, "presses or heartbeats a round")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    app.add_option("--seconds", options.streamSeconds, "length of the steady stream")
        ->check(CLI::Range(1, 500))
        ->capture_default_str();
    app.add_option("--flood", options.floodPerSecond,
        "with --press: let quiet presses and such amid so many display packets a second take "
        "turns");
    app.add_flag("--one-packet", onePacket, "press and release as one packet instead of two");
    app.add_option("--seed", options.seed, "of gaps, buttons and order")->capture_default_str();
    app.add_option("--candidates", options.candidates, "names as in the table, comma between")
        ->delimiter(',');
    app.add_option("--kestrel", options.kestrel, "the utility")->capture_default_str();
    app.add_option("--baseline", options.baseline,
        "another build of the utility, measured beside it as the candidate \"baseline\"");
    app.add_option("--assign", options.assign, "the program that gives its buttons keys")
        ->capture_default_str();
    app.add_option("--json", options.json, "write the tables to this file too");
}

void addCandidate(Options& options, const std::string& name)
{
    auto& names = options.candidates;
    if (std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(name);
}

// A bench whose receiver is still asleep when the key event comes hides so short a delay.
void checkItself(const Table& table)
{
    const Row* floor = rowOf(table, FloorName);
    const Row* late = rowOf(table, DelayedFloorName);
    if (!floor || !late)
        throw std::runtime_error("the self-check has no floor to compare");
    const double seen = *figureOf(*late, "p50 µs") - *figureOf(*floor, "p50 µs");
    std::cout << "a floor late by 20 µs is seen to be late by " << seen << " µs" << std::endl;
    if (seen < 5 || seen > 60)
        throw std::runtime_error("a delay of 20 µs must be seen as 5 to 60 µs");
}

void run(const Options& options, const Modes& modes)
{
    const auto kinds = candidateKinds(options);
    Stage stage;
    for (const auto& kind : kinds) {
        if (kind.connectsItself)
            assignKeys(stage, options);
    }
    std::vector<Table> tables;
    const auto keep = [&](Table table) {
        print(std::cout, table);
        tables.push_back(std::move(table));
    };
    if (modes.press)
        keep(pressRun(stage, kinds, options));
    if (modes.heartbeat)
        keep(heartbeatRun(stage, kinds, options));
    if (modes.rate)
        keep(rateRun(stage, kinds, options));
    if (modes.idle)
        keep(idleRun(stage, kinds, options));
    if (!options.json.empty())
        writeJson(options.json, tables);
    if (modes.selfCheck)
        checkItself(tables.front());
}
} // namespace

int main(int count, char** arguments)
{
    Options options;
    options.programs = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    options.kestrel = options.programs.parent_path() / "bin/kestrel";
    options.assign = options.programs.parent_path() / "bin/kestrelctl";
    Modes modes;
    bool onePacket = false;
    CLI::App app("From MIDI packet to key event");
    addModes(app, modes);
    auto* idle = app.add_option("--idle", options.idleSeconds,
                        "what a candidate costs in so many seconds without a press")
                     ->check(CLI::Range(1, 3600));
    addOptions(app, options, onePacket);
    CLI11_PARSE(app, count, arguments);

    modes.idle = idle->count() > 0;
    if (modes.selfCheck || (!modes.rate && !modes.heartbeat && !modes.idle))
        modes.press = true;
    if (onePacket)
        options.form = PressForm::OnePacket;
    if (options.candidates.empty())
        options.candidates = { "floor", FloorName, "floor --ask-front", "xdotool", "kestrel" };
    if (!options.baseline.empty())
        addCandidate(options, "baseline");
    if (modes.selfCheck) {
        addCandidate(options, FloorName);
        addCandidate(options, DelayedFloorName);
    }
    try {
        Interruption::listen();
        run(options, modes);
    } catch (const std::exception& error) {
        std::cerr << "press-latency: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
