#include "archive/BinaryListWriter.h"

#include "archive/BinaryListFormat.h"
#include "archive/PropertyList.h"

#include <QString>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace kestrel {

namespace {

using namespace BinaryListFormat;

// An object's first byte.
constexpr std::uint8_t mark(Marker type, std::size_t low)
{
    return static_cast<std::uint8_t>(static_cast<std::size_t>(type) << 4 | low);
}

constexpr std::uint8_t False = mark(Simple, 8);
constexpr std::uint8_t True = mark(Simple, 9);

void append(Bytes& bytes, std::uint64_t value, std::size_t size)
{
    for (std::size_t i = size; i > 0; --i)
        bytes.push_back(i > 8 ? 0 : static_cast<std::uint8_t>(value >> (8 * (i - 1))));
}

// 1, 2, 4 or 8: the bytes that the number needs.
std::size_t sizeFor(std::uint64_t value)
{
    std::size_t size = 1;
    while (size < 8 && value >> (8 * size) != 0)
        size *= 2;
    return size;
}

Bytes integer(PropertyListNode::Integer value)
{
    const std::size_t size = value.isUnsigned ? 16 : sizeFor(value.bits);
    Bytes bytes { mark(Integer, static_cast<std::size_t>(std::countr_zero(size))) };
    append(bytes, value.bits, size);
    return bytes;
}

// Counts from 15 on follow the marker as an integer object.
Bytes counted(Marker marker, std::size_t count)
{
    const std::size_t low = std::min<std::size_t>(count, 15);
    Bytes bytes { mark(marker, low) };
    if (low == 15) {
        const Bytes number = integer({ count, false });
        bytes.insert(bytes.end(), number.begin(), number.end());
    }
    return bytes;
}

Bytes text(const std::string& utf8)
{
    const bool isAscii = std::all_of(
        utf8.begin(), utf8.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (isAscii) {
        Bytes bytes = counted(Ascii, utf8.size());
        bytes.insert(bytes.end(), utf8.begin(), utf8.end());
        return bytes;
    }
    const QString string = QString::fromStdString(utf8);
    Bytes bytes = counted(Utf16, static_cast<std::size_t>(string.size()));
    for (const QChar unit : string)
        append(bytes, unit.unicode(), 2);
    return bytes;
}

Bytes data(ByteView content)
{
    Bytes bytes = counted(Data, content.size());
    bytes.insert(bytes.end(), content.begin(), content.end());
    return bytes;
}

Bytes real(plist_t node)
{
    double value = 0;
    plist_get_real_val(node, &value);
    Bytes bytes { mark(Real, 3) };
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    append(bytes, bits, 8);
    return bytes;
}

// libplist does not tell the date to the last bit, but writes it.
Bytes date(plist_t node)
{
    constexpr std::size_t Size = 9;
    char* list = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(node, &list, &size);
    const std::unique_ptr<char, decltype(&std::free)> owner(list, &std::free);
    if (!list || size < Magic.size() + Size)
        throw std::bad_alloc(); // libplist has no other reason to fail
    const char* const object = list + Magic.size();
    return { object, object + Size };
}

Bytes scalar(plist_t node)
{
    std::uint64_t uid = 0;
    std::uint8_t boolean = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        plist_get_bool_val(node, &boolean);
        return { boolean ? True : False };
    case PLIST_UINT:
        return integer(PropertyListNode::integer(node));
    case PLIST_REAL:
        return real(node);
    case PLIST_DATE:
        return date(node);
    case PLIST_DATA:
        return data(PropertyListNode::data(node));
    case PLIST_UID: {
        plist_get_uid_val(node, &uid);
        const std::size_t size = sizeFor(uid);
        Bytes bytes { mark(Uid, size - 1) };
        append(bytes, uid, size);
        return bytes;
    }
    default:
        return text(PropertyListNode::string(node));
    }
}

} // namespace

BinaryListWriter::Reference BinaryListWriter::add(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_ARRAY:
        return addArray(node);
    case PLIST_DICT:
        return addDictionary(node);
    default:
        return addScalar(scalar(node));
    }
}

BinaryListWriter::Reference BinaryListWriter::addScalar(Bytes bytes)
{
    const auto [place, isNew]
        = m_scalars.try_emplace(std::string(bytes.begin(), bytes.end()), m_objects.size());
    if (isNew)
        m_objects.push_back({ std::move(bytes), {} });
    return place->second;
}

BinaryListWriter::Reference BinaryListWriter::addArray(plist_t array)
{
    const Reference place = m_objects.size();
    m_objects.emplace_back();
    const std::vector<plist_t> items = PropertyListNode::items(array);
    std::vector<Reference> references;
    references.reserve(items.size());
    for (plist_t item : items)
        references.push_back(add(item));
    m_objects[place] = { counted(Array, items.size()), std::move(references) };
    return place;
}

// All keys come before all values.
BinaryListWriter::Reference BinaryListWriter::addDictionary(plist_t dictionary)
{
    const Reference place = m_objects.size();
    m_objects.emplace_back();
    const auto members = PropertyListNode::members(dictionary);
    std::vector<Reference> references;
    references.reserve(2 * members.size());
    for (const auto& member : members)
        references.push_back(addScalar(text(member.first)));
    for (const auto& member : members)
        references.push_back(add(member.second));
    m_objects[place] = { counted(Dictionary, members.size()), std::move(references) };
    return place;
}

Bytes BinaryListWriter::write(plist_t root)
{
    (void)add(root);
    const std::size_t referenceSize = sizeFor(m_objects.size() - 1);
    Bytes list(Magic.begin(), Magic.end());
    std::vector<std::size_t> offsets;
    for (const Object& object : m_objects) {
        offsets.push_back(list.size());
        list.insert(list.end(), object.bytes.begin(), object.bytes.end());
        for (const Reference reference : object.references)
            append(list, reference, referenceSize);
    }
    const std::size_t table = list.size();
    const std::size_t offsetSize = sizeFor(table);
    for (const std::size_t offset : offsets)
        append(list, offset, offsetSize);
    list.insert(list.end(), 6, 0);
    list.push_back(static_cast<std::uint8_t>(offsetSize));
    list.push_back(static_cast<std::uint8_t>(referenceSize));
    append(list, m_objects.size(), 8);
    append(list, 0, 8); // the root's place
    append(list, table, 8);
    return list;
}

} // namespace kestrel
