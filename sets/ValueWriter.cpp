#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"
#include "sets/ValueText.h"

#include <QLocale>

#include <cmath>
#include <cstring>

namespace kestrel {

namespace {
using ValueType = ArchiveValue::Type;

JsonValue tagged(const QString& tag, JsonValue value)
{
    JsonValue json = JsonValue::object();
    json.set(tag, std::move(value));
    return json;
}

std::uint64_t bitsOf(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

JsonValue integer(const ArchiveValue& value)
{
    const std::int64_t number = value.toInt64();
    if (value.type() == ValueType::Unsigned)
        return tagged(ValueText::Integer,
            JsonValue::ofString(QString::number(static_cast<std::uint64_t>(number))));
    if (number > ValueText::LargestPlain || number < -ValueText::LargestPlain)
        return tagged(ValueText::Integer, JsonValue::ofString(QString::number(number)));
    return JsonValue::ofNumber(number);
}

// The shortest digits that name the number. A value that is no number keeps its bits.
QString realText(double value)
{
    if (std::isnan(value))
        return QStringLiteral("nan:") + QString::number(bitsOf(value), 16);
    const QString digits = QString::number(std::abs(value), 'g', QLocale::FloatingPointShortest);
    return std::signbit(value) ? u'-' + digits : digits; // QString writes no sign before a zero
}
} // namespace

const void* identityOf(const ArchiveValue& value)
{
    switch (value.type()) {
    case ValueType::Array:
        return value.array().get();
    case ValueType::Dictionary:
        return value.dictionary().get();
    case ValueType::Object:
        return value.object().get();
    default:
        return nullptr;
    }
}

bool isIdentical(const ArchiveValue& left, const ArchiveValue& right)
{
    if (left.type() != right.type() || identityOf(left) != identityOf(right))
        return false;
    if (left.type() == ValueType::Real)
        return bitsOf(left.toDouble()) == bitsOf(right.toDouble());
    return identityOf(left) || left == right;
}

ValueWriter::ValueWriter(const ArchiveValue& root)
{
    count(root);
}

void ValueWriter::count(const ArchiveValue& value)
{
    const void* const identity = identityOf(value);
    if (!identity || ++m_places[identity] > 1)
        return;
    if (const auto array = value.array()) {
        for (const ArchiveValue& element : *array)
            count(element);
    } else if (const auto dictionary = value.dictionary()) {
        for (const ArchiveDictionary::Entry& entry : *dictionary) {
            count(entry.key);
            count(entry.value);
        }
    } else if (const auto object = value.object()) {
        for (const ArchiveObject::Member& member : object->members())
            count(member.value);
    }
}

bool ValueWriter::isShared(const ArchiveValue& value) const
{
    const auto found = m_places.find(identityOf(value));
    return found != m_places.end() && found->second > 1;
}

JsonValue ValueWriter::json(const ArchiveValue& value)
{
    if (!isShared(value))
        return content(value);
    const int next = static_cast<int>(m_ids.size()) + 1;
    const auto [place, isNew] = m_ids.try_emplace(identityOf(value), next);
    if (!isNew)
        return tagged(ValueText::Ref, JsonValue::ofNumber(place->second));
    JsonValue shared = tagged(ValueText::Id, JsonValue::ofNumber(next));
    shared.set(ValueText::Value, content(value));
    return shared;
}

JsonValue ValueWriter::json(const ArchiveObject::Member& member)
{
    JsonValue text = tagged(ValueText::Name, JsonValue::ofString(member.name));
    if (member.storage == ArchiveObject::Storage::Inline)
        text.set(ValueText::Inline, JsonValue::ofBoolean(true));
    text.set(ValueText::MemberValue, json(member.value));
    return text;
}

JsonValue ValueWriter::content(const ArchiveValue& value)
{
    JsonValue list = JsonValue::array();
    switch (value.type()) {
    case ValueType::Null:
        return {};
    case ValueType::Boolean:
        return JsonValue::ofBoolean(value.toBool());
    case ValueType::Integer:
    case ValueType::Unsigned:
        return integer(value);
    case ValueType::Real:
        return tagged(ValueText::Real, JsonValue::ofString(realText(value.toDouble())));
    case ValueType::String:
        return JsonValue::ofString(value.text());
    case ValueType::Data:
        return tagged(
            ValueText::Data, JsonValue::ofString(QString::fromLatin1(value.data().toBase64())));
    case ValueType::Array:
        for (const ArchiveValue& element : *value.array())
            list.items.push_back(json(element));
        return list;
    case ValueType::Dictionary:
        for (const ArchiveDictionary::Entry& entry : *value.dictionary()) {
            JsonValue pair = JsonValue::array();
            pair.items.push_back(json(entry.key));
            pair.items.push_back(json(entry.value));
            list.items.push_back(std::move(pair));
        }
        return tagged(ValueText::Dictionary, std::move(list));
    case ValueType::Object:
        break;
    }
    JsonValue classes = JsonValue::array();
    for (const QString& name : value.object()->classes())
        classes.items.push_back(JsonValue::ofString(name));
    for (const ArchiveObject::Member& member : value.object()->members())
        list.items.push_back(json(member));
    JsonValue object = tagged(ValueText::Class, std::move(classes));
    object.set(ValueText::Members, std::move(list));
    return object;
}

} // namespace kestrel
