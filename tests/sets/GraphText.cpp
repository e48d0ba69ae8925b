#include "tests/sets/GraphText.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"

#include <cstring>
#include <map>

namespace kestrel::test {

namespace {
using Type = ArchiveValue::Type;

class Graph {
public:
    std::string text;

    void add(const ArchiveValue& value);

private:
    void addString(const QString& string)
    {
        for (const QChar c : string)
            text += std::to_string(c.unicode()) + '.';
    }
    bool isNew(const void* container)
    {
        const auto [place, isNew] = m_containers.try_emplace(container, m_containers.size());
        text += '@' + std::to_string(place->second);
        return isNew;
    }
    void addObject(const ArchiveObject& object);

    std::map<const void*, std::size_t> m_containers;
};

void Graph::addObject(const ArchiveObject& object)
{
    for (const QString& name : object.classes())
        addString(name + u':');
    for (const ArchiveObject::Member& member : object.members()) {
        addString(member.name);
        text += member.storage == ArchiveObject::Storage::Inline ? '=' : '&';
        add(member.value);
    }
}

void Graph::add(const ArchiveValue& value)
{
    text += static_cast<char>('A' + static_cast<int>(value.type()));
    const double real = value.type() == Type::Real ? value.toDouble() : 0;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &real, sizeof bits);
    switch (value.type()) {
    case Type::Null:
        break;
    case Type::Boolean:
    case Type::Integer:
    case Type::Unsigned:
        text += std::to_string(value.toInt64());
        break;
    case Type::Real:
        text += std::to_string(bits);
        break;
    case Type::String:
        addString(value.text());
        break;
    case Type::Data:
        text += value.data().toHex().toStdString();
        break;
    case Type::Array:
        if (isNew(value.array().get())) {
            for (const ArchiveValue& element : *value.array())
                add(element);
        }
        break;
    case Type::Dictionary:
        if (isNew(value.dictionary().get())) {
            for (const auto& [key, content] : *value.dictionary()) {
                add(key);
                add(content);
            }
        }
        break;
    case Type::Object:
        if (isNew(value.object().get()))
            addObject(*value.object());
        break;
    }
    text += ';';
}
} // namespace

std::string graphText(const ArchiveValue& root)
{
    Graph graph;
    graph.add(root);
    return graph.text;
}

} // namespace kestrel::test
