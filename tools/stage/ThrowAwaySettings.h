#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/TemporaryFolder.h"

namespace kestrel::stage {

// Temporary folders for everything that a program stores for its user.
class ThrowAwaySettings {
public:
    ThrowAwaySettings();

    // Variables that lead a program to these folders, and away from the user's own session.
    [[nodiscard]] ChildProcess::Environment environment() const;
    [[nodiscard]] const std::filesystem::path& home() const { return m_home.path(); }
    [[nodiscard]] std::filesystem::path configFolder() const { return home() / "config"; }
    [[nodiscard]] std::filesystem::path runtimeFolder() const { return home() / "runtime"; }

private:
    TemporaryFolder m_home;
};

} // namespace kestrel::stage
