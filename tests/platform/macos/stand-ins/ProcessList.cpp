#include "tests/platform/macos/stand-ins/ProcessList.h"

#include "tests/platform/macos/stand-ins/Calls.h"

#include <sys/sysctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kestrel::test {

ProcessList& processList()
{
    static ProcessList list;
    return list;
}

void ProcessList::add(std::string_view commandName)
{
    kinfo_proc record {};
    std::copy_n(commandName.data(), std::min(commandName.size(), sizeof(extern_proc::p_comm) - 1),
        record.kp_proc.p_comm);
    const auto* const bytes = reinterpret_cast<const std::byte*>(&record);
    records.insert(records.end(), bytes, bytes + sizeof record);
}

} // namespace kestrel::test

using kestrel::test::calls;
using kestrel::test::processList;

int sysctl(int* name, unsigned int elements, void* value, std::size_t* size, void*, std::size_t)
{
    const int processes[] = { CTL_KERN, KERN_PROC, KERN_PROC_ALL };
    if (calls().fail(value ? "sysctl for the table" : "sysctl for the size") || elements != 4
        || !std::equal(std::begin(processes), std::end(processes), name)) {
        errno = EINVAL;
        return -1;
    }
    const auto& records = processList().records;
    if (!value) {
        *size = records.size() + processList().room;
        return 0;
    }
    if (*size < records.size()) {
        errno = ENOMEM;
        return -1;
    }
    *size = records.size();
    std::memcpy(value, records.data(), records.size());
    return 0;
}
