#include "tools/zenta-console/Console.h"
#include "tools/zenta-console/ScriptFile.h"
#include "tools/zenta-console/StopSignals.h"

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace {
using namespace kestrel::console;

// A pipe can be read only once, as it comes. A folder cannot be read at all, which is to be said
// before anything is sent.
bool isFile(int descriptor)
{
    struct stat status { };
    return ::fstat(descriptor, &status) == 0
        && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}

std::string footer()
{
    return std::string(commandSummary()) + "\n" + std::string(portsDescription())
        + "; ports of one number are a pair, and the fifth pair carries\n"
          "the traffic (the last one if there are fewer). What arrives there is printed as\n"
          "\"answer HEX at MICROSECONDS\" of the monotonic clock, what arrives elsewhere as\n"
          "\"stray\". After the last command the console goes on beating until SIGINT or SIGTERM.\n"
          "\nExit codes: 0 done, 1 an expectation failed, 2 a command or an option is wrong,\n"
          "3 there is no "
        + std::string(serverName()) + ", or it has gone.\n";
}
} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Simulates the ZENTA console on MIDI ports.", "zenta-console");
    std::string name = "ZENTA";
    int pairs = ConsolePorts::TrafficPair;
    std::string scriptPath;
    app.add_option("--name", name, "Name of the console")->capture_default_str();
    app.add_option("--pairs", pairs, "Number of port pairs")
        ->check(CLI::Range(1, 32))
        ->capture_default_str();
    Console::Options options;
    app.add_option("--speed", options.speed, "Plays the times of the script that much faster")
        ->check(CLI::Range(0.01, 1000.0))
        ->capture_default_str();
    app.add_flag("--loop", options.loops, "Begins again at the end of the script, which is a file");
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
        std::cerr << "zenta-console: " << scriptPath << ": "
                  << unreadableText({ errno, std::generic_category() }) << std::endl;
        return BadCommand;
    }
    if (isFile(script)) {
        if (const auto fault = faultOfScript(script)) {
            std::cerr << "zenta-console: " << (scriptPath.empty() ? "" : scriptPath + ": ")
                      << *fault << std::endl;
            return BadCommand;
        }
    } else if (options.loops) {
        std::cerr << "zenta-console: --loop needs a script in a file" << std::endl;
        return BadCommand;
    }
    const int stop = stopSignals();
    try {
        const auto ports = openConsolePorts(name, pairs);
        std::cout << "ready " << name << ": " << pairs << " pairs, traffic on midi_"
                  << ports->trafficPair() << std::endl;
        return Console(*ports, script, stop, options).run();
    } catch (const std::runtime_error& error) {
        std::cerr << "zenta-console: " << error.what() << std::endl;
        return ServerGone;
    }
}
