#include "assign/ButtonEntry.h"

namespace kestrel {

ArchiveArray emptyShortcutRecord()
{
    return { 0, 0, QString(), 0 };
}

ButtonEntry emptyButtonEntry()
{
    auto entry = std::make_shared<ArchiveArray>();
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record) {
        for (const ArchiveValue& element : emptyShortcutRecord())
            entry->append(element);
    }
    return entry;
}

void copyShortcutRecord(
    std::size_t offset, const ButtonEntry& source, const ButtonEntry& destination)
{
    const ArchiveArray empty = emptyShortcutRecord();
    if (source->size() <= offset) {
        for (const ArchiveValue& element : empty)
            source->append(element);
        return;
    }
    while (source->size() < offset + ShortcutRecordSize)
        source->append(empty.at(source->size() % ShortcutRecordSize));
    if (!destination)
        return;
    for (std::size_t i = offset; i < offset + ShortcutRecordSize; ++i)
        destination->replace(i, source->at(i));
}

void copyButtonEntry(const ButtonEntry& source, const ButtonEntry& destination)
{
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record)
        copyShortcutRecord(shortcutRecordOffset(record), source, destination);
}

} // namespace kestrel
