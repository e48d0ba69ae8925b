#include "archive/ArchiveObject.h"

#include <algorithm>

namespace kestrel {

ArchiveObject::ArchiveObject(QStringList classes)
    : m_classes(std::move(classes))
{
    Q_ASSERT(!m_classes.isEmpty());
}

bool ArchiveObject::contains(QStringView name) const
{
    return std::any_of(m_members.begin(), m_members.end(),
        [name](const Member& member) { return member.name == name; });
}

const ArchiveValue& ArchiveObject::value(QStringView name) const
{
    static const ArchiveValue null;
    const auto found = std::find_if(m_members.begin(), m_members.end(),
        [name](const Member& member) { return member.name == name; });
    return found == m_members.end() ? null : found->value;
}

void ArchiveObject::encodeObject(QString name, ArchiveValue value)
{
    append({ std::move(name), std::move(value), Storage::Reference });
}

void ArchiveObject::encodeInteger(QString name, std::int64_t value)
{
    append({ std::move(name), value, Storage::Inline });
}

} // namespace kestrel
