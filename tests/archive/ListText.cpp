#include "tests/archive/ListText.h"

#include <cstdio>

namespace kestrel::test {

namespace {

std::string hex(ByteView bytes)
{
    std::string text = "#";
    for (const std::uint8_t byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text;
}

std::string realText(plist_t node)
{
    double value = 0;
    plist_get_real_val(node, &value);
    char text[64];
    std::snprintf(text, sizeof text, "r%a", value);
    return text;
}

std::string dateText(plist_t node)
{
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return std::string("t") + std::to_string(seconds) + "." + std::to_string(microseconds);
}

std::string integerText(plist_t node)
{
    const PropertyListNode::Integer value = PropertyListNode::integer(node);
    return value.isUnsigned ? std::string("u") + std::to_string(value.bits)
                            : std::to_string(static_cast<std::int64_t>(value.bits));
}

} // namespace

std::string listText(plist_t node)
{
    std::string text;
    std::uint64_t uid = 0;
    std::uint8_t boolean = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        plist_get_bool_val(node, &boolean);
        return boolean ? "true" : "false";
    case PLIST_UINT:
        return integerText(node);
    case PLIST_REAL:
        return realText(node);
    case PLIST_DATE:
        return dateText(node);
    case PLIST_STRING:
        return std::string("\"") + PropertyListNode::string(node) + "\"";
    case PLIST_DATA:
        return hex(PropertyListNode::data(node));
    case PLIST_UID:
        plist_get_uid_val(node, &uid);
        return std::string("@") + std::to_string(uid);
    case PLIST_ARRAY:
        for (plist_t item : PropertyListNode::items(node))
            text += listText(item) + " ";
        return std::string("[ ") + text + "]";
    case PLIST_DICT:
        for (const auto& [key, value] : PropertyListNode::members(node))
            text += key + "=" + listText(value) + " ";
        return std::string("{ ") + text + "}";
    default:
        return "?";
    }
}

} // namespace kestrel::test
