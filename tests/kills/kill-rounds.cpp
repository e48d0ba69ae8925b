// Kills the real program at random moments while it saves files, stores its defaults and holds
// keys. After each kill, a file and the defaults must hold their old or their new content, the
// number of files must not have grown, and the next start must leave no key down.

#include "tests/kills/KilledStudio.h"

#include <CLI/CLI.hpp>

#include <array>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <stdexcept>

namespace {
using kestrel::test::KilledStudio;
using Activity = KilledStudio::Activity;

// A kill leaves at most the file that was being written, and the next writing removes it.
constexpr long MostLeftovers = 3;

// Holding keys is rare here, because the link takes ten seconds to open after each start.
constexpr std::array Rota { Activity::Saving, Activity::Storing, Activity::Holding,
    Activity::Saving, Activity::Storing };

struct Row {
    const char* name;
    int kills = 0;
    int newContents = 0;
    int keysDown = 0;
};

struct Tally {
    std::array<Row, 3> rows { Row { "saving a file" }, Row { "storing the defaults" },
        Row { "holding keys" } };
    long mostLeftovers = 0;
};

void killOnce(KilledStudio& studio, Activity activity, Tally& tally)
{
    const auto remains = studio.killDuring(activity);
    Row& row = tally.rows.at(static_cast<std::size_t>(activity));
    ++row.kills;
    row.newContents += remains.isContentNew ? 1 : 0;
    row.keysDown += remains.isKeyDown ? 1 : 0;
    tally.mostLeftovers = std::max(tally.mostLeftovers, studio.leftovers());
    if (tally.mostLeftovers > MostLeftovers)
        throw std::runtime_error(std::to_string(tally.mostLeftovers) + " files are left over");
}

void print(const Tally& tally)
{
    std::cout << std::left << std::setw(24) << "killed while" << std::right << std::setw(8)
              << "kills" << std::setw(14) << "new content" << std::setw(16) << "with keys down"
              << '\n';
    for (const Row& row : tally.rows)
        std::cout << std::left << std::setw(24) << row.name << std::right << std::setw(8)
                  << row.kills << std::setw(14) << row.newContents << std::setw(16) << row.keysDown
                  << '\n';
    std::cout << "left-over files at most: " << tally.mostLeftovers << std::endl;
}

int run(int kills, std::mt19937& random)
{
    Tally tally;
    int kill = 0;
    try {
        KilledStudio studio(random);
        for (; kill < kills; ++kill)
            killOnce(studio, Rota[static_cast<std::size_t>(kill) % Rota.size()], tally);
    } catch (const std::exception& error) {
        print(tally);
        std::cerr << "kill-rounds: kill " << kill + 1 << ": " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
    print(tally);
    return EXIT_SUCCESS;
}
} // namespace

int main(int count, char** arguments)
{
    int kills = 50;
    std::uint32_t seed = std::random_device()();
    CLI::App app("Kills the real program again and again, and examines what is left.");
    app.add_option("--kills", kills, "how often")
        ->check(CLI::Range(1, 1'000'000))
        ->capture_default_str();
    app.add_option("--seed", seed, "chooses the moments; a new one each time without it");
    CLI11_PARSE(app, count, arguments);
    std::cout << "seed " << seed << std::endl;
    std::mt19937 random(seed);
    return run(kills, random);
}
