#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/PrivateJackServer.h"
#include "tools/stage/PrivateXServer.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::stage {

// A folder that is gone with its owner.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

// A whole studio on one machine: servers, throw-away settings, and the programs in them: the
// utility, the console simulator and the workstation stand-in.
class Studio {
public:
    struct Options {
        bool tray = true;
        bool useSessionDisplay = false; // the DISPLAY of the environment instead of a private one
        bool useSessionJack = false; // the JACK server of the environment
    };

    // `programs` is the folder of the built programs.
    explicit Studio(std::filesystem::path programs);
    Studio(std::filesystem::path programs, const Options& options);

    // Stores shortcuts as kestrel-assign takes them, e.g. { "6", "⌘S" }. Throws
    // std::runtime_error with its message when it refuses.
    void assign(const std::vector<std::string>& arguments) const;

    [[nodiscard]] std::unique_ptr<ChildProcess> start(
        const std::string& program, const std::vector<std::string>& arguments = {}) const;

    // Writes what the screen shows as a PNG; false when that failed.
    [[nodiscard]] bool photograph(const std::filesystem::path& picture) const;

    [[nodiscard]] ChildProcess::Environment environment() const;
    [[nodiscard]] std::string displayName() const;
    [[nodiscard]] std::filesystem::path configFolder() const { return m_home.path() / "config"; }
    [[nodiscard]] const std::filesystem::path& home() const { return m_home.path(); }
    // Only for a studio with servers of its own.
    [[nodiscard]] PrivateXServer& display() { return *m_display; }
    [[nodiscard]] PrivateJackServer& jack() { return *m_jack; }

private:
    std::filesystem::path m_programs;
    TemporaryFolder m_home;
    std::unique_ptr<PrivateXServer> m_display;
    std::unique_ptr<PrivateJackServer> m_jack;
};

} // namespace kestrel::stage
