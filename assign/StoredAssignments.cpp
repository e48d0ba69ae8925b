#include "assign/StoredAssignments.h"

#include "archive/ArchiveLimits.h"
#include "archive/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace kestrel {

StoredAssignments::StoredAssignments(DefaultsStore& defaults, std::string recoveryFile)
    : m_defaults(defaults)
    , m_recoveryFile(std::move(recoveryFile))
{
}

void StoredAssignments::setupShortcutKey()
{
    m_myUserAssignFile = recovered();
    if (m_myUserAssignFile)
        return;
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

// Null if there is no sound copy.
std::shared_ptr<UserAssignFile> StoredAssignments::recovered()
{
    const QString path = QString::fromStdString(m_recoveryFile);
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return nullptr;
    const QByteArray copy = file.read(static_cast<qint64>(ArchiveLimits::FileBytes) + 1);
    m_ownsRecoveryFile = true;
    try {
        auto set = UserAssignFile::fromFileImage(viewOf(copy));
        if (set && set->isUserAssignFile() && set->getShortcutArray()
            && set->getShortcutTitleArray())
            return set;
    } catch (const ArchiveError&) {
    }
    file.close();
    QFile::remove(path + QStringLiteral(".damaged"));
    file.rename(path + QStringLiteral(".damaged"));
    return nullptr;
}

bool StoredAssignments::hasTable() const
{
    return m_myUserAssignFile && m_myUserAssignFile->isExistShortcut();
}

bool StoredAssignments::writeUserDefault()
{
    if (!hasTable())
        return true;
    try {
        const auto shortcuts = m_myUserAssignFile->getData();
        const auto titles = m_myUserAssignFile->getTitleData();
        m_defaults.setData(ShortcutsKey, shortcuts);
        m_defaults.setData(TitlesKey, titles);
    } catch (const ArchiveError& error) {
        m_problem = error.what();
        return false;
    }
    m_problem.clear();
    if (!m_defaults.synchronise())
        return false;
    // One that only another process has written stays.
    if (std::exchange(m_ownsRecoveryFile, false))
        QFile::remove(QString::fromStdString(m_recoveryFile));
    return true;
}

bool StoredAssignments::writeRecoveryFile()
{
    if (!hasTable() || m_recoveryFile.empty())
        return true;
    const QString path = QString::fromStdString(m_recoveryFile);
    try {
        QDir().mkpath(QFileInfo(path).absolutePath());
        m_problem = AtomicFile::write(path, m_myUserAssignFile->fileImage()).problem.toStdString();
    } catch (const ArchiveError& error) {
        m_problem = error.what();
    }
    m_ownsRecoveryFile = m_ownsRecoveryFile || m_problem.empty();
    return m_problem.empty();
}

std::string StoredAssignments::problem() const
{
    return m_problem.empty() ? m_defaults.problem() : m_problem;
}

// If this synchronisation fails, the next write stores the copy as well.
void StoredAssignments::keepAside(std::string_view key, Archive damaged)
{
    m_defaults.setData(std::string(key) + ".damaged", damaged);
    (void)m_defaults.synchronise();
}

} // namespace kestrel
