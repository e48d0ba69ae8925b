#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>

namespace kestrel::fuzz {

// A folder of this process for the files of a target, in memory where the system has such a place.
// Removed at the end of the process.
class OwnFolder {
public:
    OwnFolder()
    {
        std::error_code error;
        const std::filesystem::path memory = "/dev/shm";
        const auto parent = std::filesystem::is_directory(memory, error)
            ? memory
            : std::filesystem::temp_directory_path();
        std::string pattern = parent / "kestrel-fuzz-XXXXXX";
        if (!::mkdtemp(pattern.data()))
            std::abort();
        m_path = pattern;
    }
    ~OwnFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    [[nodiscard]] std::string file(const char* name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

inline void writeFile(const std::string& path, std::span<const std::uint8_t> bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
}

inline std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

} // namespace kestrel::fuzz
