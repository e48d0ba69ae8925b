#pragma once

#include "bench/latency/Buttons.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::bench {

// The options of the command line.
struct Options {
    std::filesystem::path programs; // the folder of the reference programs
    std::filesystem::path kestrel;
    std::filesystem::path baseline; // another build of the utility; empty = none
    std::filesystem::path assign;
    std::filesystem::path json; // empty = no file is written
    std::vector<std::string> candidates; // empty = the default ones
    unsigned seed = 1;
    std::size_t rounds = 5;
    std::size_t pressesPerRound = 200;
    PressForm form = PressForm::TwoPackets;
    int floodPerSecond = 0;
    int streamSeconds = 120;
    int strokesPerSecond = 2000; // a thousand presses and their releases
    int idleSeconds = 10;
};

} // namespace kestrel::bench
