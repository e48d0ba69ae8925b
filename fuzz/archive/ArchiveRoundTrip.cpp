#include "fuzz/archive/ArchiveRoundTrip.h"

#include "common/ArchiveError.h"
#include "common/KeyedArchive.h"
#include "common/PropertyList.h"
#include "tests/archive/ArchiveText.h"

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
        if (KeyedArchive::archivedData(again) != written)
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
        const Bytes written = list->toBinary();
        if (PropertyList::fromBytes(written).toBinary() != written)
            return "defaults are written differently the second time";
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
