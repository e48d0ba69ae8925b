#pragma once

#include "archive/ArchiveValue.h"
#include "archive/PropertyList.h"

#include <QHash>

#include <map>
#include <unordered_map>
#include <vector>

namespace kestrel {

// Builds the property list of a keyed archive. It numbers the objects depth first, as
// NSKeyedArchiver does. The values hold no cycle and outlive the encoder.
class ArchiveEncoder {
public:
    [[nodiscard]] PropertyList encode(const ArchiveValue& root);

private:
    using Uid = std::uint64_t;

    Uid uidOf(const ArchiveValue& value);
    Uid uidOfElement(const ArchiveValue& value);
    Uid uidOfNumber(const ArchiveValue& number);
    Uid uidOfText(const QString& text);
    Uid uidOfWrappedText(const QString& text);
    Uid uidOfClass(const QStringList& classes);
    Uid uidOfNull();

    Uid reserve();
    Uid add(PropertyList node);
    PropertyList arrayObject(const ArchiveArray& array);
    PropertyList dictionaryObject(const ArchiveDictionary& dictionary);
    PropertyList genericObject(const ArchiveObject& object);
    PropertyList inlineValue(const ArchiveValue& value);
    PropertyList references(const ArchiveArray& array);

    std::vector<PropertyList> m_objects;
    std::unordered_map<const void*, Uid> m_containers;
    std::map<std::pair<ArchiveValue::Type, std::uint64_t>, Uid> m_numbers; // by type and bits
    QHash<QString, Uid> m_texts;
    QHash<QByteArray, Uid> m_data;
    QHash<QStringList, Uid> m_classes;
    Uid m_null = 0; // of the NSNull object; 0 until a collection needs one
};

} // namespace kestrel
