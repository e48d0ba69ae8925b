#include "tests/archive/ListBuilder.h"

namespace kestrel::test {

namespace {

std::uint8_t byte(std::size_t value)
{
    return static_cast<std::uint8_t>(value);
}

} // namespace

std::size_t ListBuilder::raw(Bytes object)
{
    m_objects.push_back(std::move(object));
    return m_objects.size() - 1;
}

std::size_t ListBuilder::text(std::string_view ascii)
{
    Bytes object { byte(0x50 | ascii.size()) };
    if (ascii.size() > 14)
        object = { 0x5F, 0x10, byte(ascii.size()) };
    object.insert(object.end(), ascii.begin(), ascii.end());
    return raw(std::move(object));
}

std::size_t ListBuilder::integer(std::uint8_t value)
{
    return raw({ 0x10, value });
}

std::size_t ListBuilder::uid(std::uint8_t value)
{
    return raw({ 0x80, value });
}

std::size_t ListBuilder::array(std::initializer_list<std::size_t> elements)
{
    Bytes object { byte(0xA0 | elements.size()) };
    for (const std::size_t element : elements)
        object.push_back(byte(element));
    return raw(std::move(object));
}

std::size_t ListBuilder::dictionary(std::initializer_list<std::size_t> members)
{
    Bytes object { byte(0xD0 | members.size() / 2) };
    for (std::size_t first = 0; first < 2; ++first) { // all keys, then all values
        for (std::size_t i = first; i < members.size(); i += 2)
            object.push_back(byte(members.begin()[i]));
    }
    return raw(std::move(object));
}

Bytes ListBuilder::list() const
{
    return list(m_objects.size() - 1);
}

Bytes ListBuilder::list(std::size_t root) const
{
    Bytes list { 'b', 'p', 'l', 'i', 's', 't', '0', '0' };
    Bytes table;
    for (const Bytes& object : m_objects) {
        table.insert(table.end(), { byte(list.size() >> 8), byte(list.size()) });
        list.insert(list.end(), object.begin(), object.end());
    }
    const std::size_t start = list.size();
    list.insert(list.end(), table.begin(), table.end());
    Bytes trailer(TrailerSize);
    trailer[6] = 2; // bytes of an offset
    trailer[7] = 1; // bytes of a reference
    trailer[14] = byte(m_objects.size() >> 8);
    trailer[15] = byte(m_objects.size());
    trailer[22] = byte(root >> 8);
    trailer[23] = byte(root);
    trailer[30] = byte(start >> 8);
    trailer[31] = byte(start);
    list.insert(list.end(), trailer.begin(), trailer.end());
    return list;
}

} // namespace kestrel::test
