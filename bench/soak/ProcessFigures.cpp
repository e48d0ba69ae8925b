#include "bench/soak/ProcessFigures.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace kestrel::bench {

namespace {
namespace fs = std::filesystem;

constexpr std::size_t Looks = 11;
constexpr std::chrono::milliseconds BetweenLooks { 200 };

double entriesOf(const fs::path& folder)
{
    std::error_code gone;
    const fs::directory_iterator entries(folder, gone);
    return static_cast<double>(std::distance(begin(entries), end(entries)));
}

double writtenKibibytesIn(const fs::path& rollup)
{
    double sum = 0;
    std::ifstream stream(rollup);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("Private_Dirty:") || line.starts_with("Swap:"))
            sum += std::stod(line.substr(line.find(':') + 1));
    }
    return sum;
}
} // namespace

ProcessFigures ProcessFigures::of(pid_t process)
{
    const auto folder = fs::path("/proc") / std::to_string(process);
    return { writtenKibibytesIn(folder / "smaps_rollup"), entriesOf(folder / "fd"),
        entriesOf(folder / "task") };
}

ProcessFigures ProcessFigures::atRest(pid_t process)
{
    std::array<ProcessFigures, Looks> looks;
    for (ProcessFigures& look : looks) {
        look = of(process);
        std::this_thread::sleep_for(BetweenLooks);
    }
    const auto median = [&looks](double ProcessFigures::*figure) {
        std::nth_element(looks.begin(), looks.begin() + Looks / 2, looks.end(),
            [figure](const auto& one, const auto& other) { return one.*figure < other.*figure; });
        return looks[Looks / 2].*figure;
    };
    return { median(&ProcessFigures::writtenKibibytes), median(&ProcessFigures::descriptors),
        median(&ProcessFigures::threads) };
}

} // namespace kestrel::bench
