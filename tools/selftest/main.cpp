// Tries the utility on a real system, with stand-ins for the console and the workstation. Prints
// one line for each check, and leaves pictures and logs in a folder.

#include "tools/selftest/Check.h"
#include "tools/selftest/Scene.h"
#include "tools/selftest/Tap.h"

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <string>

namespace {

using namespace kestrel::selftest;

constexpr int ExitCodeOfWrongUsage = 2;

Checks allChecks()
{
    Checks all;
    for (auto part :
        { launchChecks, keyChecks, panelChecks, setupChecks, linkChecks, endChecks, imageChecks }) {
        const Checks checks = part();
        all.insert(all.end(), checks.begin(), checks.end());
    }
    return all;
}

// The parts of a demonstration: it leaves out what goes wrong on purpose.
Checks sceneChecks()
{
    Checks all;
    for (auto part : { launchChecks, keyChecks, panelChecks, setupChecks }) {
        const Checks checks = part();
        all.insert(all.end(), checks.begin(), checks.end());
    }
    return all;
}

std::optional<std::string> lackOf(const Check& check, Studio& studio)
{
    for (const Need need : check.needs) {
        if (auto lack = studio.lack(need))
            return lack;
    }
    return {};
}

void run(const Checks& checks, Scene& scene, Tap& tap)
{
    int number = 0;
    for (const Check& check : checks) {
        ++number;
        std::cerr << "== " << check.name << std::endl;
        if (const auto lack = lackOf(check, scene.studio)) {
            tap.skip(check.name, *lack);
            continue;
        }
        try {
            check.run(scene);
            tap.ok(check.name);
        } catch (const std::exception& error) {
            tap.notOk(check.name, error.what());
            scene.photograph("failed-" + std::to_string(number));
        }
    }
}

// Those of an earlier run would be taken for this one's.
void removeOldFailures(const std::filesystem::path& folder)
{
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().filename().string().starts_with("failed-"))
            std::filesystem::remove(entry.path());
    }
}

// Messages of the programs are no part of the report.
void writeErrorsTo(const std::filesystem::path& log)
{
    const int file = ::open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file >= 0)
        ::dup2(file, STDERR_FILENO);
}

} // namespace

int main(int argc, char* argv[])
{
    CLI::App arguments(
        "Tries the utility on this system and reports in the Test Anything Protocol.");
    StudioOptions options;
    std::filesystem::path folder = "selftest";
    std::filesystem::path approved = KESTREL_APPROVED_PANEL;
    bool isSceneOnly = false;
    std::string part;
    arguments.add_option("--output", folder, "Folder for pictures and logs")->capture_default_str();
    arguments.add_option("--programs", options.programs, "Folder of the programs; its own without");
    arguments.add_option("--approved", approved, "Folder of what the panel must look like");
    arguments.add_option("--image", options.image,
        "Also install this disk image in the folder and try it; the user's own assignments are set "
        "aside meanwhile");
    arguments.add_option("--only", part, "Only the checks whose name contains this");
    arguments.add_flag("--scene", isSceneOnly, "Only play the scene of the demonstration");
    try {
        arguments.parse(argc, argv);
        if (options.programs.empty())
            options.programs = std::filesystem::canonical(argv[0]).parent_path();
        std::filesystem::create_directories(folder);
        folder = std::filesystem::canonical(folder);
        removeOldFailures(folder);
    } catch (const CLI::ParseError& error) {
        return arguments.exit(error) == 0 ? EXIT_SUCCESS : ExitCodeOfWrongUsage;
    } catch (const std::exception& error) {
        std::cerr << "kestrel-selftest: " << error.what() << std::endl;
        return ExitCodeOfWrongUsage;
    }
    writeErrorsTo(folder / "programs.log");

    Tap tap(std::cout);
    Checks checks = isSceneOnly ? sceneChecks() : allChecks();
    std::erase_if(
        checks, [&part](const Check& check) { return check.name.find(part) == std::string::npos; });
    tap.plan(checks.size());
    try {
        const auto studio = makeStudio(options);
        for (const std::string& fact : studio->facts())
            tap.comment(fact);
        Scene scene(*studio, folder, approved);
        run(checks, scene, tap);
    } catch (const std::exception& error) {
        std::cout << "Bail out! " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
    tap.comment(std::to_string(tap.passed()) + " passed, " + std::to_string(tap.failed())
        + " failed, " + std::to_string(tap.skipped()) + " skipped; see " + folder.string());
    return tap.failed() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
