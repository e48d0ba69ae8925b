#include "archive/BinaryListCheck.h"

#include "archive/ArchiveError.h"
#include "archive/ArchiveLimits.h"
#include "archive/BinaryListFormat.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string>

namespace kestrel {

namespace {

using Kind = ArchiveError::Kind;

using namespace BinaryListFormat;

constexpr std::size_t HeaderSize = Magic.size();
constexpr std::size_t TrailerSize = 32;

std::uint64_t bigEndian(ByteView bytes)
{
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes)
        value = value << 8 | byte;
    return value;
}

class BinaryList {
public:
    BinaryList(ByteView list, std::size_t maxObjects);
    void check();

private:
    struct Object {
        std::uint8_t marker = 0;
        std::uint8_t low = 0;
        std::size_t count = 0; // in bytes, UTF-16 units, elements or pairs, by type
        ByteView content;
    };
    struct Extent { // the size of an object with everything that it refers to
        std::size_t objects = 1;
        std::size_t bytes = 0;
        std::size_t height = 0;
    };
    enum class State : std::uint8_t { Unseen, Open, Measured };

    Object object(std::size_t index) const;
    void readCount(Object& object, std::size_t& at) const;
    std::size_t contentSize(const Object& object) const;
    std::size_t reference(const Object& object, std::size_t position) const;
    ByteView bytes(std::size_t at, std::size_t size) const;

    const Extent& measure(std::size_t index, std::size_t depth);
    void checkScalar(const Object& object);
    void checkKeys(const Object& dictionary);
    std::u16string text(const Object& object);

    ByteView m_list;
    std::size_t m_maxExpanded;
    std::size_t m_offsetSize = 0;
    std::size_t m_referenceSize = 0;
    std::size_t m_count = 0;
    std::size_t m_root = 0;
    std::size_t m_table = 0; // offset of the offset table, which is the end of the objects
    std::vector<State> m_states;
    std::vector<Extent> m_extents;
    std::size_t m_references = 0; // checked so far
    std::size_t m_textBytes = 0; // checked so far
};

BinaryList::BinaryList(ByteView list, std::size_t maxObjects)
    : m_list(list)
    , m_maxExpanded(ArchiveLimits::expandedObjects(maxObjects))
{
    if (list.size() < HeaderSize + TrailerSize)
        throw ArchiveError(Kind::Truncated, "binary list without a trailer");
    const ByteView trailer = list.last(TrailerSize);
    const std::uint64_t count = bigEndian(trailer.subspan(8, 8));
    const std::uint64_t root = bigEndian(trailer.subspan(16, 8));
    const std::uint64_t table = bigEndian(trailer.subspan(24, 8));
    m_offsetSize = trailer[6];
    m_referenceSize = trailer[7];
    if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8)
        throw ArchiveError(Kind::BadTrailer, "binary list with impossible field sizes");
    if (count > maxObjects)
        throw ArchiveError(Kind::TooManyObjects, "binary list of too many objects");
    if (count == 0 || root >= count)
        throw ArchiveError(Kind::BadTrailer, "binary list without a root");
    const std::size_t end = list.size() - TrailerSize;
    if (table < HeaderSize || table > end || count * m_offsetSize > end - table)
        throw ArchiveError(Kind::Truncated, "offset table beyond the end of the list");
    m_count = static_cast<std::size_t>(count);
    m_root = static_cast<std::size_t>(root);
    m_table = static_cast<std::size_t>(table);
    m_states.resize(m_count);
    m_extents.resize(m_count);
}

void BinaryList::check()
{
    (void)measure(m_root, 0);
}

ByteView BinaryList::bytes(std::size_t at, std::size_t size) const
{
    if (at < HeaderSize || at > m_table || size > m_table - at)
        throw ArchiveError(Kind::Truncated, "object beyond the end of the list");
    return m_list.subspan(at, size);
}

BinaryList::Object BinaryList::object(std::size_t index) const
{
    const std::uint64_t offset
        = bigEndian(m_list.subspan(m_table + index * m_offsetSize, m_offsetSize));
    if (offset >= m_table)
        throw ArchiveError(Kind::Truncated, "object beyond the end of the list");
    auto at = static_cast<std::size_t>(offset);
    Object object;
    const std::uint8_t first = bytes(at++, 1)[0];
    object.marker = first >> 4;
    object.low = first & 0xF;
    readCount(object, at);
    object.content = bytes(at, contentSize(object));
    return object;
}

// A count of 15 or more follows the marker as an integer object.
void BinaryList::readCount(Object& object, std::size_t& at) const
{
    object.count = object.low;
    const bool isCounted = object.marker == Data || object.marker == Ascii || object.marker == Utf16
        || object.marker == Array || object.marker == Dictionary;
    if (!isCounted || object.low != 0xF)
        return;
    const std::uint8_t first = bytes(at++, 1)[0];
    if (first >> 4 != Integer || (first & 0xF) > 3)
        throw ArchiveError(Kind::BadMarker, "count that is no integer");
    const std::size_t size = std::size_t(1) << (first & 0xF);
    const std::uint64_t count = bigEndian(bytes(at, size));
    if (count > m_list.size())
        throw ArchiveError(Kind::Truncated, "count beyond the end of the list");
    object.count = static_cast<std::size_t>(count);
    at += size;
}

std::size_t BinaryList::contentSize(const Object& object) const
{
    const ArchiveError unknown(Kind::BadMarker, "object of an unknown kind");
    switch (object.marker) {
    case Simple:
        if (object.low != 0x8 && object.low != 0x9)
            throw unknown;
        return 0;
    case Integer:
        if (object.low > 4)
            throw unknown;
        return std::size_t(1) << object.low;
    case Real:
        if (object.low != 2 && object.low != 3)
            throw unknown;
        return std::size_t(1) << object.low;
    case Date:
        if (object.low != 3)
            throw unknown;
        return 8;
    case Uid:
        if (object.low > 7)
            throw unknown;
        return object.low + std::size_t(1);
    case Data:
    case Ascii:
        return object.count;
    case Utf16:
        return object.count * 2;
    case Array:
        return object.count * m_referenceSize;
    case Dictionary:
        return object.count * 2 * m_referenceSize;
    default:
        throw unknown;
    }
}

std::size_t BinaryList::reference(const Object& object, std::size_t position) const
{
    const std::uint64_t index
        = bigEndian(object.content.subspan(position * m_referenceSize, m_referenceSize));
    if (index >= m_count)
        throw ArchiveError(Kind::BadReference, "reference to an object that does not exist");
    return static_cast<std::size_t>(index);
}

const BinaryList::Extent& BinaryList::measure(std::size_t index, std::size_t depth)
{
    if (m_states[index] == State::Open)
        throw ArchiveError(Kind::Cycle, "object that holds itself");
    Extent& extent = m_extents[index];
    if (m_states[index] == State::Unseen) {
        m_states[index] = State::Open;
        const Object object = this->object(index);
        if (object.marker == Array || object.marker == Dictionary) {
            if (depth == ArchiveLimits::Depth)
                throw ArchiveError(Kind::TooDeep, "containers nested too deep");
            const std::size_t references
                = object.count * (object.marker == Dictionary ? std::size_t(2) : 1);
            m_references += references;
            if (m_references > m_maxExpanded)
                throw ArchiveError(Kind::TooManyObjects, "too many references");
            if (object.marker == Dictionary)
                checkKeys(object);
            extent.height = 1;
            for (std::size_t i = 0; i < references; ++i) {
                const Extent& part = measure(reference(object, i), depth + 1);
                extent.objects += part.objects;
                extent.bytes += part.bytes;
                extent.height = std::max(extent.height, part.height + 1);
                if (extent.objects > m_maxExpanded)
                    throw ArchiveError(Kind::TooManyObjects, "list expands to too many objects");
                if (extent.bytes > ArchiveLimits::ExpandedBytes)
                    throw ArchiveError(Kind::TooLarge, "list expands to too many bytes");
            }
        } else {
            checkScalar(object);
            extent.bytes = object.content.size();
        }
        m_states[index] = State::Measured;
    }
    if (depth + extent.height > ArchiveLimits::Depth)
        throw ArchiveError(Kind::TooDeep, "containers nested too deep");
    return extent;
}

void BinaryList::checkScalar(const Object& object)
{
    if (object.marker == Integer && object.low == 4 && bigEndian(object.content.first(8)) != 0)
        throw ArchiveError(Kind::BadMarker, "integer beyond 64 bits");
    if (object.marker == Uid
        && bigEndian(object.content) > std::numeric_limits<std::uint32_t>::max())
        throw ArchiveError(Kind::BadReference, "UID beyond 32 bits");
    if (object.marker == Ascii || object.marker == Utf16)
        (void)text(object);
}

void BinaryList::checkKeys(const Object& dictionary)
{
    if (dictionary.count > ArchiveLimits::DictionaryKeys)
        throw ArchiveError(Kind::TooManyObjects, "dictionary of too many keys");
    std::set<std::u16string> keys;
    for (std::size_t i = 0; i < dictionary.count; ++i) {
        const Object key = object(reference(dictionary, i));
        if (key.marker != Ascii && key.marker != Utf16)
            throw ArchiveError(Kind::BadMarker, "dictionary key that is no string");
        if (!keys.insert(text(key)).second)
            throw ArchiveError(Kind::DuplicateKey, "dictionary key that occurs twice");
    }
}

std::u16string BinaryList::text(const Object& object)
{
    // Objects may overlap, so the length of the list does not bound their total size.
    m_textBytes += object.content.size();
    if (m_textBytes > ArchiveLimits::ExpandedBytes)
        throw ArchiveError(Kind::TooLarge, "list expands to too many bytes");
    const std::size_t unitSize = object.marker == Utf16 ? 2 : 1;
    const ArchiveError bad(Kind::BadText, "string that is no text");
    std::u16string text;
    text.reserve(object.count);
    bool isPairOpen = false; // the previous unit was the first of a surrogate pair
    for (std::size_t i = 0; i < object.count; ++i) {
        const auto unit
            = static_cast<char16_t>(bigEndian(object.content.subspan(i * unitSize, unitSize)));
        const bool isSecond = unit >= 0xDC00 && unit <= 0xDFFF;
        if (unit == 0 || (unitSize == 1 && unit > 0x7F) || isSecond != isPairOpen)
            throw bad;
        isPairOpen = unit >= 0xD800 && unit <= 0xDBFF;
        text += unit;
    }
    if (isPairOpen)
        throw bad;
    return text;
}

} // namespace

void checkBinaryList(ByteView list, std::size_t maxObjects)
{
    BinaryList(list, maxObjects).check();
}

} // namespace kestrel
