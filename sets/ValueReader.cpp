#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"
#include "sets/ValueText.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestrel {

namespace {
using Type = JsonValue::Type;
using JsonCheck::expect;
using JsonCheck::expectMembers;
using JsonCheck::fail;
using JsonCheck::member;

double real(const JsonValue& json)
{
    const QString text = JsonCheck::string(json);
    bool isNumber = false;
    if (text.startsWith(u"nan:")) {
        const std::uint64_t bits = QStringView(text).sliced(4).toULongLong(&isNumber, 16);
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!isNumber || !std::isnan(value))
            fail(json, QStringLiteral("\"nan:\" needs the bits of a value that is no number"));
        return value;
    }
    const double value = text.toDouble(&isNumber);
    if (!isNumber || std::isnan(value) || text != text.trimmed())
        fail(json, QStringLiteral("\"%1\" is no number").arg(text));
    return value;
}

QByteArray data(const JsonValue& json)
{
    const auto decoded = QByteArray::fromBase64Encoding(
        JsonCheck::string(json).toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || (*decoded).toBase64() != JsonCheck::string(json).toUtf8())
        fail(json, QStringLiteral("the string is no base64"));
    return *decoded;
}
} // namespace

namespace JsonCheck {
void fail(const JsonValue& json, const QString& problem)
{
    throw TextError(json.position, problem);
}

void expect(const JsonValue& json, Type type, const char* name)
{
    if (json.type != type)
        fail(json, QStringLiteral("expected ") + QString::fromUtf8(name));
}

void expectMembers(const JsonValue& json, std::initializer_list<QStringView> names)
{
    expect(json, Type::Object, "an object");
    for (const JsonMember& member : json.members) {
        if (std::find(names.begin(), names.end(), member.name) == names.end())
            throw TextError(
                member.position, QStringLiteral("\"%1\" has no meaning here").arg(member.name));
    }
}

const JsonValue& member(const JsonValue& object, const QString& name)
{
    const JsonValue* const found = object.member(name);
    if (!found)
        fail(object, QStringLiteral("\"%1\" is missing").arg(name));
    return *found;
}

QString string(const JsonValue& json)
{
    expect(json, Type::String, "a string");
    return json.text;
}

ArchiveValue integer(const JsonValue& json)
{
    bool isSigned = false;
    bool isUnsigned = false;
    const qint64 value = json.text.toLongLong(&isSigned);
    const quint64 large = json.text.toULongLong(&isUnsigned);
    if (isSigned)
        return value;
    if (isUnsigned)
        return large;
    fail(json, QStringLiteral("%1 is no integer of 64 bits").arg(json.text));
}
} // namespace JsonCheck

ArchiveValue ValueReader::value(const JsonValue& json)
{
    switch (json.type) {
    case Type::Null:
        return {};
    case Type::Boolean:
        return json.boolean;
    case Type::Number:
        if (json.text.contains(u'.') || json.text.contains(u'e', Qt::CaseInsensitive))
            fail(json, QStringLiteral("a real is written as { \"$real\": \"%1\" }").arg(json.text));
        return JsonCheck::integer(json);
    case Type::String:
        return json.text;
    case Type::Array: {
        auto array = std::make_shared<ArchiveArray>();
        for (const JsonValue& item : json.items)
            array->append(value(item));
        return array;
    }
    case Type::Object:
        break;
    }
    return tagged(json);
}

ArchiveValue ValueReader::tagged(const JsonValue& json)
{
    if (json.member(ValueText::Class))
        return object(json);
    if (json.member(ValueText::Id) || json.member(ValueText::Ref))
        return identified(json);
    const JsonValue* const only = json.members.size() == 1 ? &json.members[0].value : nullptr;
    const QString tag = only ? json.members[0].name : QString();
    if (tag == ValueText::Integer) {
        expect(*only, Type::String, "a string");
        return JsonCheck::integer(*only);
    }
    if (tag == ValueText::Real)
        return real(*only);
    if (tag == ValueText::Data)
        return data(*only);
    if (tag == ValueText::Dictionary)
        return dictionary(*only);
    fail(json, QStringLiteral("expected a value: an object like this is none"));
}

ArchiveValue ValueReader::identified(const JsonValue& json)
{
    if (const JsonValue* const ref = json.member(ValueText::Ref)) {
        expectMembers(json, { ValueText::Ref });
        expect(*ref, Type::Number, "a number");
        const auto found = m_values.find(JsonCheck::integer(*ref).toInt64());
        if (found == m_values.end() || !found->second)
            fail(*ref, QStringLiteral("no value before this has the $id %1").arg(ref->text));
        return *found->second;
    }
    expectMembers(json, { ValueText::Id, ValueText::Value });
    const JsonValue& id = member(json, ValueText::Id);
    expect(id, Type::Number, "a number");
    const auto [place, isNew] = m_values.try_emplace(JsonCheck::integer(id).toInt64());
    if (!isNew)
        fail(id, QStringLiteral("another value has the $id %1").arg(id.text));
    const JsonValue& content = member(json, ValueText::Value);
    ArchiveValue shared = value(content);
    if (!identityOf(shared))
        fail(content, QStringLiteral("only an array, a dictionary or an object has an $id"));
    place->second = shared;
    return shared;
}

ArchiveValue ValueReader::dictionary(const JsonValue& pairs)
{
    expect(pairs, Type::Array, "an array of pairs");
    auto dictionary = std::make_shared<ArchiveDictionary>();
    for (const JsonValue& pair : pairs.items) {
        if (!pair.is(Type::Array) || pair.items.size() != 2)
            fail(pair, QStringLiteral("expected [key, value]"));
        ArchiveValue key = value(pair.items[0]);
        if (dictionary->contains(key))
            fail(pair, QStringLiteral("the dictionary has this key twice"));
        ArchiveValue content = value(pair.items[1]);
        dictionary->set(std::move(key), std::move(content));
    }
    return dictionary;
}

ArchiveValue ValueReader::object(const JsonValue& json)
{
    expectMembers(json, { ValueText::Class, ValueText::Members });
    const JsonValue& classes = member(json, ValueText::Class);
    expect(classes, Type::Array, "an array of names");
    if (classes.items.empty())
        fail(classes, QStringLiteral("an object has a class"));
    QStringList names;
    for (const JsonValue& name : classes.items)
        names.append(JsonCheck::string(name));
    const auto object = std::make_shared<ArchiveObject>(names);
    const JsonValue& members = member(json, ValueText::Members);
    expect(members, Type::Array, "an array of members");
    for (const JsonValue& item : members.items) {
        ArchiveObject::Member member = readMember(item);
        if (object->contains(member.name))
            fail(item, QStringLiteral("the object has this member twice"));
        object->append(std::move(member));
    }
    return object;
}

ArchiveObject::Member ValueReader::readMember(const JsonValue& json)
{
    expectMembers(json, { ValueText::Name, ValueText::Inline, ValueText::MemberValue });
    const JsonValue* const storage = json.member(ValueText::Inline);
    if (storage)
        expect(*storage, Type::Boolean, "true or false");
    const bool isInline = storage && storage->boolean;
    return { JsonCheck::string(member(json, ValueText::Name)),
        value(member(json, ValueText::MemberValue)),
        isInline ? ArchiveObject::Storage::Inline : ArchiveObject::Storage::Reference };
}

} // namespace kestrel
