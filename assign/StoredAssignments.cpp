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

    if (!restore(ShortcutsKey, [&](Archive archive) {
            set.setData(archive);
            return !set.isExistShortcut() || set.getShortcutArray();
        }))
        set.initShortcutArray();

    if (!restore(TitlesKey, [&](Archive archive) {
            set.setTitleData(archive);
            return set.getShortcutTitleArray() != nullptr;
        }))
        set.initShortcutTitleArray();
}

// Returns false if the key has no value or `take` does not accept it.
bool StoredAssignments::restore(std::string_view key, const std::function<bool(Archive)>& take)
{
    const auto archive = m_defaults.data(key);
    if (!archive)
        return false;
    try {
        if (take(*archive))
            return true;
    } catch (const ArchiveError&) {
    }
    keepAside(key, *archive);
    return false;
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

// If this synchronisation fails, the next write stores the copy as well.
void StoredAssignments::keepAside(std::string_view key, Archive damaged)
{
    m_defaults.setData(std::string(key) + ".damaged", damaged);
    (void)m_defaults.synchronise();
}

} // namespace kestrel
