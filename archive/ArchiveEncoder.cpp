#include "archive/ArchiveEncoder.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveFormat.h"
#include "archive/ArchiveObject.h"

#include <cstring>

namespace kestrel {

namespace {

using Type = ArchiveValue::Type;

void set(const PropertyList& dictionary, const char* name, PropertyList value)
{
    plist_dict_set_item(dictionary.root(), name, value.release());
}

void append(const PropertyList& array, PropertyList value)
{
    plist_array_append_item(array.root(), value.release());
}

PropertyList makeDictionary()
{
    return PropertyList(plist_new_dict());
}

PropertyList makeArray()
{
    return PropertyList(plist_new_array());
}

PropertyList makeText(const QString& text)
{
    return PropertyList(plist_new_string(text.toUtf8().constData()));
}

PropertyList makeUid(std::uint64_t uid)
{
    return PropertyList(plist_new_uid(uid));
}

PropertyList makeData(const QByteArray& data)
{
    return PropertyList(plist_new_data(data.constData(), static_cast<std::uint64_t>(data.size())));
}

PropertyList makeNumber(const ArchiveValue& number)
{
    if (number.type() == Type::Boolean)
        return PropertyList(plist_new_bool(number.toBool()));
    if (number.type() == Type::Real)
        return PropertyList(plist_new_real(number.toDouble()));
    return PropertyListNode::makeInteger(
        { static_cast<std::uint64_t>(number.toInt64()), number.type() == Type::Unsigned });
}

} // namespace

PropertyList ArchiveEncoder::encode(const ArchiveValue& root)
{
    m_objects.clear();
    add(PropertyList(plist_new_string(ArchiveFormat::Null)));
    PropertyList top = makeDictionary();
    set(top, ArchiveFormat::Root, makeUid(uidOf(root)));
    PropertyList objects = makeArray();
    for (PropertyList& object : m_objects)
        append(objects, std::move(object));
    PropertyList archive = makeDictionary();
    set(archive, ArchiveFormat::VersionKey, PropertyList(plist_new_uint(ArchiveFormat::Version)));
    set(archive, ArchiveFormat::Archiver,
        PropertyList(plist_new_string(ArchiveFormat::ArchiverName)));
    set(archive, ArchiveFormat::Top, std::move(top));
    set(archive, ArchiveFormat::Objects, std::move(objects));
    return archive;
}

ArchiveEncoder::Uid ArchiveEncoder::reserve()
{
    return add(PropertyList(nullptr));
}

ArchiveEncoder::Uid ArchiveEncoder::add(PropertyList node)
{
    m_objects.push_back(std::move(node));
    return m_objects.size() - 1;
}

ArchiveEncoder::Uid ArchiveEncoder::uidOf(const ArchiveValue& value)
{
    const auto container = [&](const auto& pointer, auto makeObject) {
        const auto [place, isNew] = m_containers.try_emplace(pointer.get(), 0);
        if (!isNew)
            return place->second;
        const Uid uid = reserve();
        place->second = uid;
        m_objects[uid] = (this->*makeObject)(*pointer);
        return uid;
    };
    switch (value.type()) {
    case Type::Null:
        return 0;
    case Type::String:
        return uidOfText(value.text());
    case Type::Data: {
        const QByteArray data = value.data();
        if (!m_data.contains(data))
            m_data.insert(data, add(makeData(data)));
        return m_data.value(data);
    }
    case Type::Array:
        return container(value.array(), &ArchiveEncoder::arrayObject);
    case Type::Dictionary:
        return container(value.dictionary(), &ArchiveEncoder::dictionaryObject);
    case Type::Object:
        return container(value.object(), &ArchiveEncoder::genericObject);
    default:
        return uidOfNumber(value);
    }
}

// Collections cannot hold nil; an NSNull object takes its place.
ArchiveEncoder::Uid ArchiveEncoder::uidOfElement(const ArchiveValue& value)
{
    return value.isNull() ? uidOfNull() : uidOf(value);
}

ArchiveEncoder::Uid ArchiveEncoder::uidOfNumber(const ArchiveValue& number)
{
    auto bits = static_cast<std::uint64_t>(number.toInt64());
    if (const double real = number.toDouble(); number.type() == Type::Real)
        std::memcpy(&bits, &real, sizeof bits);
    const auto [place, isNew] = m_numbers.try_emplace({ number.type(), bits }, 0);
    if (isNew)
        place->second = add(makeNumber(number));
    return place->second;
}

ArchiveEncoder::Uid ArchiveEncoder::uidOfText(const QString& text)
{
    if (const auto known = m_texts.constFind(text); known != m_texts.cend())
        return *known;
    const bool isPlain = text != QLatin1String(ArchiveFormat::Null) && !text.contains(QChar(0));
    const Uid uid = isPlain ? add(makeText(text)) : uidOfWrappedText(text);
    m_texts.insert(text, uid);
    return uid;
}

// For a text that readers of a plain string would take for nil ("$null") or cut at a NUL.
ArchiveEncoder::Uid ArchiveEncoder::uidOfWrappedText(const QString& text)
{
    const Uid uid = reserve();
    PropertyList object = makeDictionary();
    if (text.contains(QChar(0)))
        set(object, "NS.bytes", makeData(text.toUtf8()));
    else
        set(object, "NS.string", makeText(text));
    set(object, ArchiveFormat::Class, makeUid(uidOfClass({ "NSString", "NSObject" })));
    m_objects[uid] = std::move(object);
    return uid;
}

ArchiveEncoder::Uid ArchiveEncoder::uidOfNull()
{
    if (m_null == 0) {
        m_null = reserve();
        PropertyList object = makeDictionary();
        set(object, ArchiveFormat::Class, makeUid(uidOfClass({ "NSNull", "NSObject" })));
        m_objects[m_null] = std::move(object);
    }
    return m_null;
}

ArchiveEncoder::Uid ArchiveEncoder::uidOfClass(const QStringList& classes)
{
    if (const auto known = m_classes.constFind(classes); known != m_classes.cend())
        return *known;
    PropertyList chain = makeArray();
    for (const QString& name : classes)
        append(chain, makeText(name));
    PropertyList entry = makeDictionary();
    set(entry, ArchiveFormat::ClassName, makeText(classes.front()));
    set(entry, ArchiveFormat::Classes, std::move(chain));
    const Uid uid = add(std::move(entry));
    m_classes.insert(classes, uid);
    return uid;
}

PropertyList ArchiveEncoder::references(const ArchiveArray& array)
{
    PropertyList node = makeArray();
    for (const ArchiveValue& element : array)
        append(node, makeUid(uidOfElement(element)));
    return node;
}

PropertyList ArchiveEncoder::arrayObject(const ArchiveArray& array)
{
    PropertyList object = makeDictionary();
    set(object, "NS.objects", references(array));
    set(object, ArchiveFormat::Class,
        makeUid(uidOfClass({ "NSMutableArray", "NSArray", "NSObject" })));
    return object;
}

PropertyList ArchiveEncoder::dictionaryObject(const ArchiveDictionary& dictionary)
{
    PropertyList keys = makeArray();
    for (const ArchiveDictionary::Entry& entry : dictionary)
        append(keys, makeUid(uidOfElement(entry.key)));
    PropertyList values = makeArray();
    for (const ArchiveDictionary::Entry& entry : dictionary)
        append(values, makeUid(uidOfElement(entry.value)));
    PropertyList object = makeDictionary();
    set(object, "NS.keys", std::move(keys));
    set(object, "NS.objects", std::move(values));
    set(object, ArchiveFormat::Class,
        makeUid(uidOfClass({ "NSMutableDictionary", "NSDictionary", "NSObject" })));
    return object;
}

PropertyList ArchiveEncoder::genericObject(const ArchiveObject& object)
{
    PropertyList node = makeDictionary();
    for (const ArchiveObject::Member& member : object.members()) {
        const bool isInline = member.storage == ArchiveObject::Storage::Inline;
        set(node, member.name.toUtf8().constData(),
            isInline ? inlineValue(member.value) : makeUid(uidOf(member.value)));
    }
    set(node, ArchiveFormat::Class, makeUid(uidOfClass(object.classes())));
    return node;
}

// Writes a member inside the object. Only types that the decoder accepts there come here.
PropertyList ArchiveEncoder::inlineValue(const ArchiveValue& value)
{
    switch (value.type()) {
    case Type::String:
        return makeText(value.text());
    case Type::Data:
        return makeData(value.data());
    case Type::Array:
        return references(*value.array());
    case Type::Null:
    case Type::Dictionary:
    case Type::Object:
        return makeUid(uidOf(value));
    default:
        return makeNumber(value);
    }
}

} // namespace kestrel
