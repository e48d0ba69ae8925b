#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace kestrel::test {

// A folder of one test's own, gone with it.
class TemporaryFolder {
public:
    // Beside the test's working folder, whose file system is a disk's and not a memory's.
    explicit TemporaryFolder(const std::filesystem::path& parent = std::filesystem::current_path())
    {
        std::string name = parent / "kestrel-test-XXXXXX";
        m_path = ::mkdtemp(name.data());
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace kestrel::test
