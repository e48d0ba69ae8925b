#include "platform/macos/ProcessRecords.h"

#include <algorithm>

namespace kestrel::ProcessRecords {

namespace {
std::string_view commandName(std::span<const std::byte> record)
{
    const auto* first = reinterpret_cast<const char*>(record.data() + NameOffset);
    return { first,
        static_cast<std::size_t>(std::find(first, first + MaxNameLength, '\0') - first) };
}
} // namespace

bool contains(std::span<const std::byte> table, std::string_view name)
{
    for (; table.size() >= RecordSize; table = table.subspan(RecordSize)) {
        if (commandName(table.first(RecordSize)) == name)
            return true;
    }
    return false;
}

} // namespace kestrel::ProcessRecords
