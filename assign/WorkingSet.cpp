#include "assign/WorkingSet.h"

namespace kestrel {

namespace {

constexpr int ButtonCount = UserAssignFile::ButtonCount;

bool isButton(int number)
{
    return number >= 1 && number <= ButtonCount;
}

std::size_t placeOf(int number)
{
    return static_cast<std::size_t>(number - 1);
}

} // namespace

void WorkingSet::take(const UserAssignFile& set)
{
    if (!m_myShortcutArray)
        m_myShortcutArray = std::make_shared<ArchiveDictionary>();
    for (const ArchiveValue& key : set.allKeys()) {
        if (const ButtonEntry source = set.getShortcut(key)) {
            const ButtonEntry entry = emptyButtonEntry();
            copyButtonEntry(source, entry);
            m_myShortcutArray->set(key, entry);
        }
    }
    for (int number = 1; number <= ButtonCount; ++number) {
        if (set.getShortcut(number))
            takeTitle(set, number);
    }
}

void WorkingSet::takeTitles(const UserAssignFile& set)
{
    const auto entries = set.getShortcutArray();
    for (int number = 1; number <= ButtonCount; ++number) {
        if (entries && entries->contains(number))
            takeTitle(set, number);
    }
}

void WorkingSet::takeTitle(const UserAssignFile& set, int number)
{
    if (const auto title = set.getShortcutTitle(number))
        setName(number, *title);
}

void WorkingSet::write(UserAssignFile& set) const
{
    if (!m_myShortcutArray)
        return;
    for (const auto& [key, value] : *m_myShortcutArray) {
        if (const ButtonEntry entry = value.array())
            copyButtonEntry(entry, set.getShortcut(key));
    }
    for (int number = 1; number <= ButtonCount; ++number) {
        const bool hasName = !name(number).isEmpty() || m_myShortcutArray->contains(number);
        if (hasName && set.getShortcutTitle(number))
            set.setShortcutTitle(name(number), number);
    }
}

ButtonEntry WorkingSet::entry(int number) const
{
    return m_myShortcutArray ? m_myShortcutArray->value(number).array() : nullptr;
}

QString WorkingSet::name(int number) const
{
    return isButton(number) ? m_names[placeOf(number)] : QString();
}

void WorkingSet::setName(int number, const QString& name)
{
    if (isButton(number))
        m_names[placeOf(number)] = name;
}

} // namespace kestrel
