#include "archive/PropertyList.h"

#include "archive/ArchiveError.h"
#include "archive/ArchiveLimits.h"
#include "archive/BinaryListCheck.h"
#include "archive/BinaryListWriter.h"
#include "archive/NumericLocale.h"
#include "archive/XmlListCheck.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace kestrel {

namespace {

using Kind = ArchiveError::Kind;

constexpr std::string_view BinaryMagic = "bplist00";
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

std::string_view textOf(ByteView bytes)
{
    return { reinterpret_cast<const char*>(bytes.data()), bytes.size() };
}

plist_t parsedBinary(ByteView list, std::size_t maxObjects)
{
    checkBinaryList(list, maxObjects);
    plist_t root = nullptr;
    plist_from_bin(textOf(list).data(), static_cast<std::uint32_t>(list.size()), &root);
    if (!root)
        throw ArchiveError(Kind::NotAPropertyList, "binary list that cannot be read");
    return root;
}

plist_t parsedXml(ByteView list, std::size_t maxObjects)
{
    if (textOf(list).starts_with(Utf8Mark))
        list = list.subspan(Utf8Mark.size());
    const std::string_view text = textOf(list);
    const std::size_t start = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const std::string_view first = text.substr(start);
    if (!first.starts_with("<?xml") && !first.starts_with("<!DOCTYPE")
        && !first.starts_with("<plist"))
        throw ArchiveError(Kind::NotAPropertyList, "neither a binary nor an XML list");
    checkXmlList(list, maxObjects);
    const NumericLocale plainNumbers;
    plist_t root = nullptr;
    plist_from_xml(text.data(), static_cast<std::uint32_t>(text.size()), &root);
    if (!root)
        throw ArchiveError(Kind::MalformedXml, "XML list that cannot be read");
    return root;
}

// A binary list that holds one integer of `size` bytes: 8 for signed, 16 for unsigned numbers.
Bytes integerList(std::uint64_t bits, std::size_t size)
{
    Bytes list(BinaryMagic.begin(), BinaryMagic.end());
    list.push_back(size == 16 ? 0x14 : 0x13);
    list.insert(list.end(), size - 8, 0);
    for (int shift = 56; shift >= 0; shift -= 8)
        list.push_back(static_cast<std::uint8_t>(bits >> shift));
    const auto table = static_cast<std::uint8_t>(list.size());
    list.push_back(static_cast<std::uint8_t>(BinaryMagic.size()));
    Bytes trailer(32);
    trailer[6] = trailer[7] = 1; // bytes of an offset and of a reference
    trailer[15] = 1; // number of objects
    trailer[31] = table;
    list.insert(list.end(), trailer.begin(), trailer.end());
    return list;
}

} // namespace

PropertyList::PropertyList(plist_t root)
    : m_root(root)
{
}

PropertyList PropertyList::fromBytes(ByteView list, std::size_t maxObjects)
{
    if (list.size() > ArchiveLimits::FileBytes)
        throw ArchiveError(Kind::TooLarge, "list of too many bytes");
    return PropertyList(textOf(list).starts_with(BinaryMagic) ? parsedBinary(list, maxObjects)
                                                              : parsedXml(list, maxObjects));
}

Bytes PropertyList::toBinary() const
{
    return BinaryListWriter().write(m_root.get());
}

std::vector<plist_t> PropertyListNode::items(plist_t array)
{
    std::vector<plist_t> items;
    items.reserve(plist_array_get_size(array));
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(array, &iterator);
    const std::unique_ptr<void, FreeMemory> owner(iterator);
    plist_t item = nullptr;
    for (plist_array_next_item(array, iterator, &item); item;
         plist_array_next_item(array, iterator, &item))
        items.push_back(item);
    return items;
}

std::vector<std::pair<std::string, plist_t>> PropertyListNode::members(plist_t dictionary)
{
    std::vector<std::pair<std::string, plist_t>> members;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    const std::unique_ptr<void, FreeMemory> owner(iterator);
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &value);
        const std::unique_ptr<char, FreeMemory> keyOwner(key);
        if (!key || !value)
            return members;
        members.emplace_back(key, value);
    }
}

std::string PropertyListNode::string(plist_t node)
{
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text ? std::string(text, length) : std::string();
}

ByteView PropertyListNode::data(plist_t node)
{
    std::uint64_t length = 0;
    const char* bytes = plist_get_data_ptr(node, &length);
    return { reinterpret_cast<const std::uint8_t*>(bytes), bytes ? length : 0 };
}

PropertyListNode::Integer PropertyListNode::integer(plist_t node)
{
    Integer value;
    plist_get_uint_val(node, &value.bits);
    if (value.bits >> 63) {
        char* list = nullptr;
        std::uint32_t size = 0;
        plist_to_bin(node, &list, &size);
        const std::unique_ptr<char, FreeMemory> owner(list);
        value.isUnsigned = size > BinaryMagic.size() && list[BinaryMagic.size()] == 0x14;
    }
    return value;
}

PropertyList PropertyListNode::makeInteger(Integer value)
{
    if (!(value.bits >> 63))
        return PropertyList(plist_new_uint(value.bits));
    return PropertyList::fromBytes(integerList(value.bits, value.isUnsigned ? 16 : 8));
}

} // namespace kestrel
