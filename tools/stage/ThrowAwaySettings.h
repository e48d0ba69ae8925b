#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/TemporaryFolder.h"

namespace kestrel::stage {

// What a program keeps for its user, in folders that are gone with their owner.
class ThrowAwaySettings {
public:
    ThrowAwaySettings();

    // Sends a program there, and away from the user's own session.
    [[nodiscard]] ChildProcess::Environment environment() const;
    [[nodiscard]] const std::filesystem::path& home() const { return m_home.path(); }
    [[nodiscard]] std::filesystem::path configFolder() const { return home() / "config"; }
    [[nodiscard]] std::filesystem::path runtimeFolder() const { return home() / "runtime"; }

private:
    TemporaryFolder m_home;
};

} // namespace kestrel::stage
