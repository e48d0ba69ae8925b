#include "platform/linux/system/ProcProcessTable.h"

#include "platform/ProcessRecords.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>

namespace kestrel {

namespace fs = std::filesystem;

namespace {
bool isProcess(const fs::path& folder)
{
    const std::string name = folder.filename().string();
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

void appendRecord(std::vector<std::byte>& table, const std::string& commandName)
{
    using namespace ProcessRecords;
    const std::size_t start = table.size();
    table.resize(start + RecordSize);
    std::transform(commandName.begin(),
        commandName.begin()
            + static_cast<std::ptrdiff_t>(std::min(commandName.size(), MaxNameLength)),
        table.begin() + static_cast<std::ptrdiff_t>(start + NameOffset),
        [](char c) { return static_cast<std::byte>(c); });
}
} // namespace

ProcProcessTable::ProcProcessTable(fs::path root)
    : m_root(std::move(root))
{
}

std::optional<std::vector<std::byte>> ProcProcessTable::read()
{
    std::error_code error;
    fs::directory_iterator folders(m_root, error);
    if (error)
        return {};
    std::vector<std::byte> table;
    for (; folders != fs::directory_iterator(); folders.increment(error)) {
        if (!isProcess(folders->path()))
            continue;
        std::string commandName;
        // A process may be gone by now: then there is no name, and no record.
        if (std::getline(std::ifstream(folders->path() / "comm"), commandName))
            appendRecord(table, commandName);
    }
    return table;
}

} // namespace kestrel
