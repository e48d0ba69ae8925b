#include "fuzz/archive/ArchiveRoundTrip.h"

#include "archive/ArchiveError.h"
#include "archive/KeyedArchive.h"
#include "archive/PropertyList.h"
#include "tests/archive/ArchiveText.h"
#include "tests/archive/ListText.h"

#include <optional>

namespace kestrel::test {

namespace {

std::string wholeArchiveFault(ByteView bytes)
{
    ArchiveValue value;
    try {
        value = KeyedArchive::unarchivedRoot(bytes);
    } catch (const ArchiveError&) {
        return {};
    }
    try {
        const Bytes written = KeyedArchive::archivedData(value);
        const ArchiveValue again = KeyedArchive::unarchivedRoot(written);
        if (archiveText(again) != archiveText(value))
            return "reads back as another value: " + archiveText(again);
        const Bytes second = KeyedArchive::archivedData(again);
        // The references show what is shared.
        if (listText(PropertyList::fromBytes(second).root())
            != listText(PropertyList::fromBytes(written).root()))
            return "is written differently the second time";
    } catch (const ArchiveError& error) {
        return std::string("cannot be written and read again: ") + error.what();
    }
    return {};
}

std::string defaultsFault(ByteView bytes)
{
    std::optional<PropertyList> list;
    try {
        list = PropertyList::fromBytes(bytes);
    } catch (const ArchiveError&) {
        return {};
    }
    try {
        const PropertyList again = PropertyList::fromBytes(list->toBinary());
        if (listText(again.root()) != listText(list->root()))
            return "defaults read back as another list: " + listText(again.root());
    } catch (const ArchiveError& error) {
        return std::string("defaults cannot be read again: ") + error.what();
    }
    return {};
}

} // namespace

std::string archiveFault(ByteView bytes)
{
    const std::string fault = wholeArchiveFault(bytes);
    return fault.empty() ? defaultsFault(bytes) : fault;
}

} // namespace kestrel::test
