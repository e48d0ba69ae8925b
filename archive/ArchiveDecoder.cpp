#include "archive/ArchiveDecoder.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveError.h"
#include "archive/ArchiveFormat.h"
#include "archive/ArchiveLimits.h"
#include "archive/ArchiveObject.h"

#include <QStringDecoder>

#include <optional>

namespace kestrel {

namespace {

using Kind = ArchiveError::Kind;

[[noreturn]] void malformed(const char* text)
{
    throw ArchiveError(Kind::MalformedObject, text);
}

bool is(plist_t node, plist_type type)
{
    return node && plist_get_node_type(node) == type;
}

// The dictionary's member if it has this type, else null.
plist_t member(plist_t dictionary, const char* name, plist_type type)
{
    plist_t node = plist_dict_get_item(dictionary, name);
    return is(node, type) ? node : nullptr;
}

QString text(ByteView utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(QByteArrayView(utf8.data(), std::ssize(utf8)));
    if (decoder.hasError())
        throw ArchiveError(Kind::BadText, "string that is no text");
    return text;
}

QString text(plist_t node)
{
    return QString::fromStdString(PropertyListNode::string(node));
}

// Reads a reference to another object. It is a UID node; in XML, a dictionary with "CF$UID".
std::optional<std::uint64_t> referenceOf(plist_t node)
{
    std::uint64_t uid = 0;
    if (is(node, PLIST_UID)) {
        plist_get_uid_val(node, &uid);
        return uid;
    }
    if (!is(node, PLIST_DICT) || plist_dict_get_size(node) != 1)
        return std::nullopt;
    plist_t number = member(node, ArchiveFormat::XmlUid, PLIST_UINT);
    if (!number)
        return std::nullopt;
    plist_get_uint_val(number, &uid);
    return uid;
}

ArchiveValue integer(plist_t node)
{
    const PropertyListNode::Integer value = PropertyListNode::integer(node);
    if (value.isUnsigned)
        return value.bits;
    return static_cast<std::int64_t>(value.bits);
}

// The names in a class entry, most derived first.
QStringList classesAt(plist_t entry)
{
    plist_t name
        = is(entry, PLIST_DICT) ? member(entry, ArchiveFormat::ClassName, PLIST_STRING) : nullptr;
    if (!name)
        malformed("class without a name");
    QStringList classes { text(name) };
    plist_t chain = plist_dict_get_item(entry, ArchiveFormat::Classes);
    if (!chain)
        return classes;
    if (!is(chain, PLIST_ARRAY))
        malformed("class with a malformed chain");
    const std::vector<plist_t> bases = PropertyListNode::items(chain);
    for (std::size_t i = 0; i < bases.size(); ++i) {
        if (!is(bases[i], PLIST_STRING) || (i == 0 && text(bases[i]) != classes[0]))
            malformed("class with a malformed chain");
        if (i > 0)
            classes.append(text(bases[i]));
    }
    return classes;
}

} // namespace

ArchiveDecoder::ArchiveDecoder(const PropertyList& list)
{
    plist_t archive = list.root();
    plist_t archiver = is(archive, PLIST_DICT)
        ? member(archive, ArchiveFormat::Archiver, PLIST_STRING)
        : nullptr;
    if (!archiver || PropertyListNode::string(archiver) != ArchiveFormat::ArchiverName)
        throw ArchiveError(Kind::NotAnArchive, "property list that is no keyed archive");
    plist_t version = member(archive, ArchiveFormat::VersionKey, PLIST_UINT);
    if (!version || PropertyListNode::integer(version).bits != ArchiveFormat::Version)
        throw ArchiveError(Kind::UnsupportedVersion, "keyed archive of an unknown version");
    m_top = member(archive, ArchiveFormat::Top, PLIST_DICT);
    plist_t objects = member(archive, ArchiveFormat::Objects, PLIST_ARRAY);
    if (!m_top || !objects)
        malformed("keyed archive without its objects");
    for (plist_t node : PropertyListNode::items(objects))
        m_slots.push_back({ node, State::Unseen, {} });
    if (m_slots.empty() || PropertyListNode::string(m_slots[0].node) != ArchiveFormat::Null)
        malformed("keyed archive without the object for nothing");
    m_slots[0].state = State::Decoded;
}

ArchiveValue ArchiveDecoder::root()
{
    return decodeReference(plist_dict_get_item(m_top, ArchiveFormat::Root));
}

ArchiveValue ArchiveDecoder::decodeReference(plist_t node)
{
    const auto uid = referenceOf(node);
    if (!uid)
        malformed("reference that is none");
    return decode(*uid);
}

ArchiveValue ArchiveDecoder::decode(std::uint64_t uid)
{
    if (uid >= m_slots.size())
        throw ArchiveError(Kind::BadReference, "UID of an object that does not exist");
    Slot& slot = m_slots[static_cast<std::size_t>(uid)];
    if (slot.state == State::Open)
        throw ArchiveError(Kind::Cycle, "object that holds itself");
    if (slot.state == State::Decoded)
        return slot.value;
    // The values inside the innermost container are one level deeper than the container itself.
    if (m_depth > ArchiveLimits::Depth)
        throw ArchiveError(Kind::TooDeep, "objects nested too deep");
    slot.state = State::Open;
    ++m_depth;
    slot.value = is(slot.node, PLIST_DICT) ? decodeObject(slot.node) : decodeNode(slot.node);
    --m_depth;
    slot.state = State::Decoded;
    return slot.value;
}

// A value that the list holds directly, not as an object of the archive.
ArchiveValue ArchiveDecoder::decodeNode(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT:
        return integer(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING:
        return text(node);
    case PLIST_DATA: {
        const ByteView bytes = PropertyListNode::data(node);
        return QByteArray(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
    }
    case PLIST_DATE:
        throw ArchiveError(Kind::BadMarker, "date inside an archive");
    default:
        malformed("object that is no value");
    }
}

const QStringList& ArchiveDecoder::classesOf(plist_t object)
{
    const auto uid = referenceOf(plist_dict_get_item(object, ArchiveFormat::Class));
    if (!uid)
        malformed("object without a class");
    if (*uid >= m_slots.size())
        throw ArchiveError(Kind::BadReference, "UID of a class that does not exist");
    const auto [place, isNew] = m_classes.try_emplace(*uid);
    if (isNew)
        place->second = classesAt(m_slots[static_cast<std::size_t>(*uid)].node);
    return place->second;
}

ArchiveValue ArchiveDecoder::decodeObject(plist_t node)
{
    const QStringList& classes = classesOf(node);
    const QString& name = classes[0];
    if (name == u"NSMutableDictionary" || name == u"NSDictionary")
        return decodeDictionary(node);
    if (name == u"NSMutableArray" || name == u"NSArray") {
        auto array = std::make_shared<ArchiveArray>();
        for (ArchiveValue& value : decodeReferences(plist_dict_get_item(node, "NS.objects")))
            array->append(std::move(value));
        return array;
    }
    if (name == u"NSMutableString" || name == u"NSString") {
        ArchiveValue string = decodeMember(node, "NS.string");
        if (string.isString())
            return string;
        const ArchiveValue bytes = decodeMember(node, "NS.bytes");
        if (bytes.type() != ArchiveValue::Type::Data)
            malformed("string without a text");
        return text(viewOf(bytes.data()));
    }
    if (name == u"NSMutableData" || name == u"NSData") {
        ArchiveValue data = decodeMember(node, "NS.data");
        if (data.type() != ArchiveValue::Type::Data)
            malformed("data without bytes");
        return data;
    }
    if (name == u"NSNumber") {
        for (const char* member : { "NS.boolval", "NS.intval", "NS.dblval", "NS.number" }) {
            ArchiveValue number = decodeMember(node, member);
            if (number.isNumber())
                return number;
        }
        malformed("number without a value");
    }
    if (name == u"NSNull")
        return {};
    return decodeGeneric(node, classes);
}

// The member may be inline or an object of its own. Null when it is missing.
ArchiveValue ArchiveDecoder::decodeMember(plist_t node, const char* name)
{
    plist_t member = plist_dict_get_item(node, name);
    if (!member)
        return {};
    return referenceOf(member) ? decodeReference(member) : decodeNode(member);
}

std::vector<ArchiveValue> ArchiveDecoder::decodeReferences(plist_t array)
{
    if (!is(array, PLIST_ARRAY))
        malformed("collection without its objects");
    std::vector<ArchiveValue> values;
    for (plist_t node : PropertyListNode::items(array))
        values.push_back(decodeReference(node));
    return values;
}

ArchiveValue ArchiveDecoder::decodeDictionary(plist_t node)
{
    const std::vector<ArchiveValue> keys = decodeReferences(plist_dict_get_item(node, "NS.keys"));
    const std::vector<ArchiveValue> values
        = decodeReferences(plist_dict_get_item(node, "NS.objects"));
    if (keys.size() != values.size())
        malformed("dictionary with keys and objects of different number");
    auto dictionary = std::make_shared<ArchiveDictionary>();
    for (std::size_t i = 0; i < keys.size(); ++i)
        dictionary->set(keys[i], values[i]);
    return dictionary;
}

// Keeps an object of an unknown class with all its members.
ArchiveValue ArchiveDecoder::decodeGeneric(plist_t node, const QStringList& classes)
{
    using Storage = ArchiveObject::Storage;
    auto object = std::make_shared<ArchiveObject>(classes);
    for (const auto& [name, value] : PropertyListNode::members(node)) {
        const QString memberName = QString::fromStdString(name);
        if (name == ArchiveFormat::Class)
            continue;
        if (referenceOf(value)) {
            object->append({ memberName, decodeReference(value), Storage::Reference });
        } else if (is(value, PLIST_ARRAY)) {
            auto array = std::make_shared<ArchiveArray>();
            for (ArchiveValue& element : decodeReferences(value))
                array->append(std::move(element));
            object->append({ memberName, std::move(array), Storage::Inline });
        } else {
            object->append({ memberName, decodeNode(value), Storage::Inline });
        }
    }
    return object;
}

} // namespace kestrel
