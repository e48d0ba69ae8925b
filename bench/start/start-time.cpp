// Measures how long the utility takes from the start of its process until its item is in the tray,
// beside an empty program with such an item. The programs take turns on a display of its own.

#include "bench/latency/Clock.h"
#include "bench/latency/Distribution.h"
#include "bench/latency/Report.h"
#include "bench/start/PixelTray.h"
#include "tools/stage/ChildProcess.h"
#include "tools/stage/PrivateXServer.h"
#include "tools/stage/ThrowAwaySettings.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace {
namespace stage = kestrel::stage;
using namespace kestrel::bench;
using std::chrono::milliseconds;

constexpr std::int64_t Patience = 20'000'000'000; // ns
constexpr int WarmUps = 2; // rounds that fill the caches of the disk and of the fonts
const std::string Reference = "empty program";

struct Options {
    std::filesystem::path kestrel;
    std::filesystem::path empty;
    std::filesystem::path json;
    int rounds = 30;
};

struct Starter {
    std::string name;
    std::vector<std::string> command;
    Distribution docked {};
    Distribution shown {};
};

stage::ChildProcess::Environment environmentOf(
    const stage::ThrowAwaySettings& settings, const stage::PrivateXServer& display)
{
    auto environment = settings.environment();
    environment.merge(display.environment());
    environment["JACK_NO_START_SERVER"] = "1";
    environment["JACK_DEFAULT_SERVER"] = "kestrel-none";
    return environment;
}

void measure(Starter& starter, PixelTray& tray, const stage::ChildProcess::Environment& environment,
    bool counts)
{
    const std::int64_t start = monotonicNanoseconds();
    {
        stage::ChildProcess program(starter.command, environment);
        const auto times = tray.takeItem(start + Patience);
        if (!times)
            throw std::runtime_error(starter.name + " shows no item in the tray");
        if (counts) {
            starter.docked.add(times->docked - start);
            starter.shown.add(times->shown - start);
        }
        program.signal(SIGTERM);
        program.wait(milliseconds(5000));
    }
    tray.awaitEmpty(monotonicNanoseconds() + Patience);
}

Row row(const Starter& starter)
{
    const auto at = [](const Distribution& times, double percent) {
        return times.microsecondsAt(percent) / 1000;
    };
    return { starter.name,
        { { "starts", static_cast<double>(starter.shown.count()) },
            { "asked p50 ms", at(starter.docked, 50), 1 },
            { "shown p50 ms", at(starter.shown, 50), 1 },
            { "shown p90 ms", at(starter.shown, 90), 1 } } };
}

void run(const Options& options)
{
    const stage::ThrowAwaySettings settings;
    const stage::PrivateXServer display;
    PixelTray tray(display.display());
    const auto environment = environmentOf(settings, display);
    std::vector<Starter> starters { { Reference, { options.empty.string() } },
        { "kestrel", { options.kestrel.string() } } };
    for (int round = -WarmUps; round < options.rounds; ++round) {
        for (Starter& starter : starters)
            measure(starter, tray, environment, round >= 0);
    }
    Table table { "From process start to the status item", {} };
    for (const Starter& starter : starters)
        table.rows.push_back(row(starter));
    addRatios(table, Reference, { "shown p50 ms" });
    print(std::cout, table);
    if (!options.json.empty())
        writeJson(options.json, { table });
}
} // namespace

int main(int count, char** arguments)
{
    Options options;
    const auto programs = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    options.empty = programs / "empty-tray";
    options.kestrel = programs.parent_path() / "bin/kestrel";
    CLI::App app("From process start to the status item");
    app.add_option("--rounds", options.rounds, "starts of each program")->capture_default_str();
    app.add_option("--kestrel", options.kestrel, "the utility")->capture_default_str();
    app.add_option("--json", options.json, "write the table to this file too");
    CLI11_PARSE(app, count, arguments);
    try {
        run(options);
    } catch (const std::exception& error) {
        std::cerr << "start-time: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
