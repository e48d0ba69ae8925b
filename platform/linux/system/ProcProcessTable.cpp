#include "platform/linux/system/ProcProcessTable.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <optional>

namespace kestrel {

namespace {
using ShortName = std::array<char, 16>; // 15 bytes and a line break

bool isProcess(const dirent& entry)
{
    const std::string_view name(entry.d_name);
    return std::ranges::all_of(name, [](unsigned char digit) { return std::isdigit(digit) != 0; });
}

// Missing when the process has ended meanwhile.
std::optional<std::string_view> shortName(int folder, const std::string& process, ShortName& buffer)
{
    const std::string path = process + "/comm";
    const int file = ::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {};
    const ssize_t size = ::read(file, buffer.data(), buffer.size());
    ::close(file);
    if (size <= 0)
        return {};
    std::string_view name(buffer.data(), static_cast<std::size_t>(size));
    if (name.ends_with('\n'))
        name.remove_suffix(1);
    return name;
}
} // namespace

ProcProcessTable::ProcProcessTable(std::string folder)
    : m_folder(std::move(folder))
{
}

bool ProcProcessTable::isRunning(std::string_view commandName)
{
    struct Close {
        void operator()(DIR* folder) const { ::closedir(folder); }
    };
    const std::unique_ptr<DIR, Close> processes(::opendir(m_folder.c_str()));
    if (!processes)
        return false;
    ShortName buffer;
    while (const dirent* entry = ::readdir(processes.get())) {
        if (isProcess(*entry)
            && shortName(::dirfd(processes.get()), entry->d_name, buffer) == commandName)
            return true;
    }
    return false;
}

std::string ProcProcessTable::commandNameOf(std::uint32_t process)
{
    const int folder = ::open("/proc", O_PATH | O_DIRECTORY | O_CLOEXEC);
    ShortName buffer;
    const auto name = shortName(folder, std::to_string(process), buffer);
    ::close(folder);
    return std::string(name.value_or(std::string_view()));
}

} // namespace kestrel
