#include "assign/StoredAssignments.h"

#include <string>

namespace kestrel {

StoredAssignments::StoredAssignments(DefaultsStore& defaults)
    : m_defaults(defaults)
{
}

void StoredAssignments::setupShortcutKey()
{
    m_myUserAssignFile = std::make_shared<UserAssignFile>();
    UserAssignFile& set = *m_myUserAssignFile;

    const auto shortcuts = m_defaults.data(ShortcutsKey);
    try {
        if (shortcuts)
            set.setData(*shortcuts);
        else
            set.initShortcutArray();
    } catch (const ArchiveError&) {
        keepAside(ShortcutsKey, *shortcuts);
        set.initShortcutArray();
    }

    const auto titles = m_defaults.data(TitlesKey);
    try {
        if (titles)
            set.setTitleData(*titles);
        else
            set.initShortcutTitleArray();
    } catch (const ArchiveError&) {
        keepAside(TitlesKey, *titles);
        set.initShortcutTitleArray();
    }
}

bool StoredAssignments::writeUserDefault()
{
    if (!m_myUserAssignFile || !m_myUserAssignFile->isExistShortcut())
        return true;
    try {
        const auto shortcuts = m_myUserAssignFile->getData();
        const auto titles = m_myUserAssignFile->getTitleData();
        m_defaults.setData(ShortcutsKey, shortcuts);
        m_defaults.setData(TitlesKey, titles);
    } catch (const ArchiveError&) {
        return false;
    }
    return m_defaults.synchronise();
}

// What cannot be synchronised now goes to the disk together with the next write.
void StoredAssignments::keepAside(std::string_view key, std::span<const std::uint8_t> damaged)
{
    m_defaults.setData(std::string(key) + ".damaged", damaged);
    (void)m_defaults.synchronise();
}

} // namespace kestrel
