#pragma once

#include <filesystem>

namespace kestrel::stage {

// A new folder, removed with all its content when the object ends.
class TemporaryFolder {
public:
    // Throws std::system_error when it cannot be created.
    explicit TemporaryFolder(
        const std::filesystem::path& parent = std::filesystem::temp_directory_path());
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace kestrel::stage
