#include "fuzz/peer/PeerText.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"
#include "tests/archive/ArchiveText.h"

#include <QStringList>

#include <algorithm>

namespace kestrel::fuzz {

namespace {

using Type = ArchiveValue::Type;

std::optional<QString> arrayText(const ArchiveArray& array)
{
    QString text;
    for (const ArchiveValue& element : array) {
        const auto part = peerText(element);
        if (!part || element.type() == Type::Null)
            return {};
        text += *part + u',';
    }
    return u'[' + text + u']';
}

std::optional<QString> dictionaryText(const ArchiveDictionary& dictionary)
{
    QStringList entries;
    QStringList keys;
    for (const ArchiveDictionary::Entry& entry : dictionary) {
        const auto key = peerText(entry.key);
        const auto value = peerText(entry.value);
        const bool isPlainKey
            = entry.key.type() == Type::String || entry.key.type() == Type::Integer;
        if (!key || !value || !isPlainKey || entry.value.type() == Type::Null
            || keys.contains(*key))
            return {};
        keys += *key;
        entries += *key + u':' + *value + u',';
    }
    std::sort(entries.begin(), entries.end());
    return u'{' + entries.join(QString()) + u'}';
}

std::optional<QString> setText(const ArchiveObject& object)
{
    const auto type = peerText(object.value(u"myType"));
    const auto shortcuts = peerText(object.value(u"orgShortcutArray"));
    const auto titles = peerText(object.value(u"orgShortcutTitleArray"));
    const ArchiveValue& version = object.value(u"myVersion");
    const bool isPlain = object.className() == u"UserAssignFile" && object.members().size() == 4
        && version.type() == Type::Integer;
    if (!type || !shortcuts || !titles || !isPlain)
        return {};
    return QStringLiteral("UserAssignFile:NSObject<&myType %1;=myVersion i%2;&orgShortcutArray %3;"
                          "&orgShortcutTitleArray %4;>")
        .arg(*type, QString::number(version.toInt64()), *shortcuts, *titles);
}

} // namespace

std::optional<QString> peerText(const ArchiveValue& value)
{
    switch (value.type()) {
    case Type::Data:
        return {};
    case Type::Array:
        return arrayText(*value.array());
    case Type::Dictionary:
        return dictionaryText(*value.dictionary());
    case Type::Object:
        return setText(*value.object());
    default:
        return QString::fromStdString(test::archiveText(value));
    }
}

} // namespace kestrel::fuzz
