// Lets the utility work for a long time: events of all kinds arrive at a steady rate, the panel is
// open, the setup window opens and closes, and ports of another program come and go. Compares its
// memory, descriptors and threads at the end with those after the first minute.

#include "bench/latency/Interruption.h"
#include "bench/latency/Report.h"
#include "bench/soak/EventStream.h"
#include "bench/soak/FlappingPorts.h"
#include "bench/soak/ProcessFigures.h"
#include "tools/stage/Patience.h"
#include "tools/stage/SetupWindowOnScreen.h"
#include "tools/stage/StatusIcon.h"
#include "tools/stage/Studio.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>

namespace {
namespace stage = kestrel::stage;
using namespace kestrel::bench;
using Clock = std::chrono::steady_clock;
using std::chrono::minutes;

constexpr minutes WarmUp { 1 };
constexpr std::chrono::seconds LinkTimeout { 30 };
constexpr stage::milliseconds ProgramTimeout { 10000 };
constexpr double FewestAnswers = 0.5; // for each heartbeat; the link is closed while ports change
const std::string Panel = "Plug-in Panel";

struct Options {
    std::filesystem::path programs;
    std::filesystem::path json;
    int minutes = 30;
    int rate = 500;
    double limit = 2; // percent
};

struct Sample {
    double minutes = 0;
    ProcessFigures figures;
};

// The studio with its programs, of which the utility is online and shows its panel.
class Soak {
public:
    explicit Soak(const Options& options)
        : m_studio(options.programs, { .cycles = stage::PrivateJackServer::Cycles::Independent })
    {
        for (int button = 1; button <= 12; ++button)
            m_studio.assign({ std::to_string(button), "A", "⌘S", "⌥⌘D", "⇪F5" });
        m_workstation = m_studio.start("Pro Tools");
        m_console = m_studio.start("zenta-console");
        m_kestrel = m_studio.start("kestrel");
        const stage::StatusIcon icon(m_studio.displayName(), m_studio.environment());
        const auto isOnline = [&icon] { return icon.face() == stage::StatusIcon::Face::Online; };
        if (!stage::comesTrue(isOnline, LinkTimeout))
            throw std::runtime_error("the utility does not come online");
        icon.choosePanel();
        m_stream.emplace(*m_console, *m_workstation, options.rate);
    }

    // Opens and closes the setup window, and lets another program's ports come and go.
    void turn()
    {
        // A second start opens the setup window. The menu would take the console's keys for its
        // own.
        if (m_studio.start("kestrel")->wait(ProgramTimeout) != 0)
            throw std::runtime_error("the utility does not answer a second start");
        m_setup.person.waitUntilShown(m_setup.Title);
        m_ports.comeAndGo();
        closeSetupWindow();
        m_ports.comeAndGo();
        ++m_editors;
        if (m_stream->hasFailed() || m_kestrel->wait(stage::milliseconds(0)))
            throw std::runtime_error("a program has ended");
        // Closing the setup window hides the panel for a moment.
        if (!stage::comesTrue(
                [this] { return bool(m_setup.person.window(Panel)); }, ProgramTimeout))
            throw std::runtime_error("the panel is gone");
    }

    // The utility has the memory for packets of a link only while it is open and answers, so the
    // figures are taken in that state.
    [[nodiscard]] ProcessFigures figures() const
    {
        constexpr long Settled = 2; // the first answer may be that of a link about to be rebuilt
        const long before = m_stream->answers();
        const auto answers = [this, before] { return m_stream->answers() >= before + Settled; };
        if (!stage::comesTrue(answers, LinkTimeout))
            throw std::runtime_error("the utility does not answer");
        return ProcessFigures::atRest(m_kestrel->pid());
    }
    [[nodiscard]] const EventStream& stream() const { return *m_stream; }

    [[nodiscard]] Table work(double seconds) const
    {
        return { "What it did",
            { { "kestrel",
                { { "s", seconds }, { "events", double(m_stream->sent()) },
                    { "answers", double(m_stream->answers()) },
                    { "key events", double(m_stream->keys()) },
                    { "setup windows", double(m_editors) },
                    { "ports came and went", double(m_ports.times()) } } } } };
    }

private:
    // On a busy machine the window manager may let a request pass.
    void closeSetupWindow() const
    {
        const auto isGone = [this] { return !m_setup.person.window(m_setup.Title); };
        for (int attempt = 0; attempt < 5; ++attempt) {
            stage::ChildProcess close({ "wmctrl", "-c", m_setup.Title }, m_studio.environment());
            static_cast<void>(close.wait(ProgramTimeout));
            if (stage::comesTrue(isGone, ProgramTimeout))
                return;
        }
        throw std::runtime_error("the setup window does not close");
    }

    stage::Studio m_studio;
    std::unique_ptr<stage::ChildProcess> m_workstation;
    std::unique_ptr<stage::ChildProcess> m_console;
    std::unique_ptr<stage::ChildProcess> m_kestrel;
    stage::SetupWindowOnScreen m_setup { m_studio };
    FlappingPorts m_ports { m_studio.jack().name() };
    std::optional<EventStream> m_stream;
    long m_editors = 0;
};

// A long run is followed, and an interrupted one has not been for nothing.
void tell(const Sample& sample)
{
    std::cout << "minute " << std::lround(sample.minutes) << ": "
              << std::lround(sample.figures.writtenKibibytes) << " KiB, "
              << std::lround(sample.figures.descriptors) << " descriptors, "
              << std::lround(sample.figures.threads) << " threads" << std::endl;
}

Row row(const std::string& name, const ProcessFigures& figures)
{
    return { name,
        { { "written KiB", figures.writtenKibibytes }, { "descriptors", figures.descriptors },
            { "threads", figures.threads } } };
}

double growth(double before, double after)
{
    return before == 0 ? 100 : (after / before - 1) * 100;
}

ProcessFigures growth(const ProcessFigures& before, const ProcessFigures& after)
{
    return { growth(before.writtenKibibytes, after.writtenKibibytes),
        growth(before.descriptors, after.descriptors), growth(before.threads, after.threads) };
}

Row growthRow(const ProcessFigures& percent)
{
    return { "growth in percent",
        { { "written KiB", percent.writtenKibibytes, 1 }, { "descriptors", percent.descriptors, 1 },
            { "threads", percent.threads, 1 } } };
}

int run(const Options& options)
{
    Soak soak(options);
    const auto start = Clock::now();
    std::vector<Sample> samples;
    // A sample for each minute, from the end of the first one on.
    for (auto next = start + WarmUp; next <= start + minutes(options.minutes);) {
        soak.turn();
        Interruption::check();
        if (Clock::now() < next)
            continue;
        samples.push_back(
            { std::chrono::duration<double, std::ratio<60>>(Clock::now() - start).count(),
                soak.figures() });
        tell(samples.back());
        next += WarmUp;
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    const auto percent = growth(samples.front().figures, samples.back().figures);

    Table held { "What it held", {} };
    for (const Sample& sample : samples)
        held.rows.push_back(
            row("minute " + std::to_string(std::lround(sample.minutes)), sample.figures));
    held.rows.push_back(growthRow(percent));
    const std::vector<Table> tables { soak.work(seconds), held };
    for (const Table& table : tables)
        print(std::cout, table);
    if (!options.json.empty())
        writeJson(options.json, tables);
    if (double(soak.stream().answers()) < seconds * FewestAnswers || soak.stream().keys() == 0)
        throw std::runtime_error("the utility did not keep up its link");
    for (const double figure : { percent.writtenKibibytes, percent.descriptors, percent.threads }) {
        if (std::abs(figure) > options.limit)
            throw std::runtime_error("a figure has changed by more than the limit");
    }
    return EXIT_SUCCESS;
}
} // namespace

int main(int count, char** arguments)
{
    Options options;
    options.programs = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
    options.programs /= "bin";
    CLI::App app("What the utility holds after a long time of work");
    app.add_option("--minutes", options.minutes, "how long")
        ->check(CLI::Range(2, 10'000))
        ->capture_default_str();
    app.add_option("--rate", options.rate, "events a second")
        ->check(CLI::Range(1, 5000))
        ->capture_default_str();
    app.add_option("--limit", options.limit, "the most that a figure may change, in percent")
        ->capture_default_str();
    app.add_option("--json", options.json, "write the tables to this file too");
    CLI11_PARSE(app, count, arguments);
    try {
        Interruption::listen();
        return run(options);
    } catch (const std::exception& error) {
        std::cerr << "soak-run: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
}
