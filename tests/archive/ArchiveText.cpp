#include "tests/archive/ArchiveText.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"

#include <cinttypes>
#include <cstdio>

namespace kestrel::test {

namespace {

using Type = ArchiveValue::Type;

template <typename... Arguments> std::string formatted(const char* format, Arguments... arguments)
{
    char text[64];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

std::string objectText(const ArchiveObject& object)
{
    std::string text = object.classes().join(u':').toStdString() + "<";
    for (const ArchiveObject::Member& member : object.members()) {
        text += member.storage == ArchiveObject::Storage::Inline ? "=" : "&";
        text += member.name.toStdString() + " ";
        text += archiveText(member.value) + ";";
    }
    return text + ">";
}

} // namespace

std::string archiveText(const ArchiveValue& value)
{
    std::string text;
    switch (value.type()) {
    case Type::Null:
        return "nil";
    case Type::Boolean:
        return value.toBool() ? "true" : "false";
    case Type::Integer:
        return formatted("i%" PRId64, value.toInt64());
    case Type::Unsigned:
        return formatted("u%" PRIu64, static_cast<std::uint64_t>(value.toInt64()));
    case Type::Real:
        return formatted("r%a", value.toDouble());
    case Type::String:
        return std::string("'") + value.text().toStdString() + "'";
    case Type::Data:
        return std::string("#") + value.data().toHex().toStdString();
    case Type::Array:
        for (const ArchiveValue& element : *value.array())
            text += archiveText(element) + ",";
        return std::string("[") + text + "]";
    case Type::Dictionary:
        for (const ArchiveDictionary::Entry& entry : *value.dictionary())
            text += archiveText(entry.key) + ":" + archiveText(entry.value) + ",";
        return std::string("{") + text + "}";
    case Type::Object:
        return objectText(*value.object());
    }
    return text;
}

} // namespace kestrel::test
