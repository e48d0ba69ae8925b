#include "platform/macos/SysctlProcessTable.h"

#include "platform/macos/ProcessRecords.h"

#include <sys/sysctl.h>

#include <cstddef>
#include <iterator>
#include <optional>
#include <vector>

namespace kestrel {

static_assert(sizeof(kinfo_proc) == ProcessRecords::RecordSize);
static_assert(offsetof(kinfo_proc, kp_proc.p_comm) == ProcessRecords::NameOffset);
static_assert(sizeof(extern_proc::p_comm) == ProcessRecords::MaxNameLength + 1);

namespace {
std::optional<std::vector<std::byte>> readTable()
{
    int name[] = { CTL_KERN, KERN_PROC, KERN_PROC_ALL, 0 };
    std::size_t size = 0;
    if (sysctl(name, std::size(name), nullptr, &size, nullptr, 0) != 0)
        return std::nullopt;
    // The size that the kernel returns leaves room for processes that start between the two calls.
    std::vector<std::byte> table(size);
    if (sysctl(name, std::size(name), table.data(), &size, nullptr, 0) != 0)
        return std::nullopt;
    table.resize(size);
    return table;
}
} // namespace

bool SysctlProcessTable::isRunning(std::string_view commandName)
{
    const auto table = readTable();
    return table && ProcessRecords::contains(*table, commandName);
}

} // namespace kestrel
