#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::selftest {

// Runs a tool of the system. Returns its output without the last line feed, whatever its exit code.
std::string runTool(const std::vector<std::string>& command);

// Installs the program of a disk image in a folder and uses it. The user's own settings are set
// aside meanwhile.
class InstalledImage {
public:
    InstalledImage(const std::filesystem::path& image, const std::filesystem::path& folder);
    ~InstalledImage();
    InstalledImage(const InstalledImage&) = delete;
    InstalledImage& operator=(const InstalledImage&) = delete;

    // Returns what is wrong; empty if nothing.
    [[nodiscard]] std::string fault(const std::string& set);

private:
    [[nodiscard]] std::string setAside();
    void restore();
    [[nodiscard]] std::string install();
    [[nodiscard]] std::string use(const std::string& set);
    [[nodiscard]] std::string useCompanion(const std::string& set);

    std::filesystem::path m_image;
    std::filesystem::path m_volume;
    std::filesystem::path m_app;
    std::filesystem::path m_settings; // the user's own, meanwhile
    bool m_isSetAside = false;
    bool m_isMounted = false;
};

} // namespace kestrel::selftest
