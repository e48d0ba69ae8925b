#include "tools/zenta-console/Console.h"

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <iostream>
#include <stdexcept>
#include <string>

namespace {
using namespace kestrel::console;

// Blocks SIGINT and SIGTERM in all threads. Returns a descriptor that becomes readable when one of
// them arrives.
int takeStopSignals()
{
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, SIGINT);
    sigaddset(&stop, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stop, nullptr);
    return ::signalfd(-1, &stop, SFD_CLOEXEC);
}

std::string footer()
{
    return std::string(commandSummary())
        + "\nThe JACK client has the output ports midi_1, midi_2, ... and the input ports\n"
          "midi_1_in, midi_2_in, ...; ports of one number are a pair, and the fifth pair carries\n"
          "the traffic (the last one if there are fewer). What arrives there is printed as\n"
          "\"answer HEX at MICROSECONDS\" of the monotonic clock, what arrives elsewhere as\n"
          "\"stray\". After the last command the console goes on beating until SIGINT or SIGTERM.\n"
          "\nExit codes: 0 done, 1 an expectation failed, 2 a command or an option is wrong,\n"
          "3 there is no JACK server, or it has gone.\n";
}
} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Simulates the ZENTA console on JACK MIDI ports.", "zenta-console");
    std::string name = "ZENTA";
    int pairs = ConsolePorts::TrafficPair;
    std::string scriptPath;
    app.add_option("--name", name, "Name of the JACK client")->capture_default_str();
    app.add_option("--pairs", pairs, "Number of port pairs")
        ->check(CLI::Range(1, 32))
        ->capture_default_str();
    app.add_option("script", scriptPath, "File of commands; standard input without it");
    app.footer(footer());
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? Done : BadCommand;
    }

    int script = STDIN_FILENO;
    if (!scriptPath.empty())
        script = ::open(scriptPath.c_str(), O_RDONLY | O_CLOEXEC);
    if (script < 0) {
        std::cerr << "zenta-console: cannot read " << scriptPath << std::endl;
        return BadCommand;
    }
    const int stop = takeStopSignals();
    try {
        ConsolePorts ports(name, pairs);
        std::cout << "ready " << name << ": " << pairs << " pairs, traffic on midi_"
                  << ports.trafficPair() << std::endl;
        return Console(ports, script, stop).run();
    } catch (const std::runtime_error& error) {
        std::cerr << "zenta-console: " << error.what() << std::endl;
        return ServerGone;
    }
}
