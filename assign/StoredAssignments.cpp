#include "assign/StoredAssignments.h"

#include "archive/ArchiveLimits.h"
#include "archive/AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {
constexpr std::string_view Damaged = ".damaged";
constexpr std::string_view Replaced = ".replaced";

Bytes textOf(std::int64_t number)
{
    const QByteArray text = QByteArray::number(static_cast<qlonglong>(number));
    return { text.begin(), text.end() };
}
} // namespace

StoredAssignments::StoredAssignments(
    DefaultsStore& defaults, std::string recoveryFile, Unusable unusable)
    : m_defaults(defaults)
    , m_recoveryFile(std::move(recoveryFile))
    , m_unusable(unusable)
{
}

void StoredAssignments::setupShortcutKey()
{
    m_stored = {};
    m_myUserAssignFile = recovered(timeOfStoring());
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
    if (hasTable())
        m_stored = { set.getData(), set.getTitleData() };
}

// In milliseconds since 1970; 0 if it is not known.
std::int64_t StoredAssignments::timeOfStoring()
{
    const Bytes text = m_defaults.data(StoredAtKey).value_or(Bytes());
    return QByteArray(reinterpret_cast<const char*>(text.data()), std::ssize(text)).toLongLong();
}

// Later than all that was stored before, also when the clock has been set back since.
std::int64_t StoredAssignments::timeForStoring()
{
    const QFileInfo recoveryFile(QString::fromStdString(m_recoveryFile));
    const std::int64_t recoverable
        = recoveryFile.isFile() ? recoveryFile.lastModified().toMSecsSinceEpoch() : 0;
    return std::max<std::int64_t>(
        QDateTime::currentMSecsSinceEpoch(), std::max(timeOfStoring(), recoverable) + 1);
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

// Null if there is no sound copy, or if another run has stored a set since.
std::shared_ptr<UserAssignFile> StoredAssignments::recovered(std::int64_t storedAt)
{
    const QString path = QString::fromStdString(m_recoveryFile);
    QFile file(path);
    const QFileInfo info(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return nullptr;
    if (info.lastModified().toMSecsSinceEpoch() < storedAt) {
        keepRecoveryFileAside(Replaced);
        return nullptr;
    }
    const QByteArray copy = file.read(static_cast<qint64>(ArchiveLimits::FileBytes) + 1);
    m_recoveryContent = Bytes(copy.begin(), copy.end());
    try {
        auto set = UserAssignFile::fromFileImage(viewOf(copy));
        if (set && set->isUserAssignFile() && set->getShortcutArray()
            && set->getShortcutTitleArray())
            return set;
    } catch (const ArchiveError&) {
    }
    keepRecoveryFileAside(Damaged);
    return nullptr;
}

// Under its name with the ending added.
void StoredAssignments::keepRecoveryFileAside(std::string_view ending) const
{
    if (m_unusable == Unusable::LeftAlone)
        return;
    const QString path = QString::fromStdString(m_recoveryFile);
    const QString aside = path + QLatin1String(ending.data(), static_cast<int>(ending.size()));
    if (ending == Replaced)
        qWarning("The assignments that were stored last are newer than those of a run that was "
                 "killed, which are kept as %s.",
            qUtf8Printable(aside));
    QFile::remove(aside);
    QFile::rename(path, aside);
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
        if (!m_recoveryFile.empty() && m_stored != std::pair(shortcuts, titles))
            m_defaults.setData(StoredAtKey, textOf(timeForStoring()));
    } catch (const ArchiveError& error) {
        m_problem = error.what();
        return false;
    }
    m_problem.clear();
    if (!m_defaults.synchronise())
        return false;
    // A file that another run has written since stays.
    if (const auto content = std::exchange(m_recoveryContent, {}))
        (void)AtomicFile::removeIfStill(QString::fromStdString(m_recoveryFile), *content);
    return true;
}

bool StoredAssignments::writeRecoveryFile()
{
    if (!hasTable() || m_recoveryFile.empty())
        return true;
    const QString path = QString::fromStdString(m_recoveryFile);
    try {
        QDir().mkpath(QFileInfo(path).absolutePath());
        Bytes content = m_myUserAssignFile->fileImage();
        m_problem = AtomicFile::write(path, content).problem.toStdString();
        if (m_problem.empty()) {
            m_recoveryContent = std::move(content);
            makeNewerThanWhatIsStored(path);
        }
    } catch (const ArchiveError& error) {
        m_problem = error.what();
    }
    return m_problem.empty();
}

// The clock of the file system ticks more slowly than the other, and either may have been set back.
void StoredAssignments::makeNewerThanWhatIsStored(const QString& path)
{
    if (QFileInfo(path).lastModified().toMSecsSinceEpoch() > timeOfStoring())
        return;
    QFile file(path);
    const auto newer = QDateTime::fromMSecsSinceEpoch(timeForStoring());
    if (!file.open(QIODevice::ReadWrite)
        || !file.setFileTime(newer, QFileDevice::FileModificationTime))
        m_problem = file.errorString().toStdString();
}

std::string StoredAssignments::problem() const
{
    return m_problem.empty() ? m_defaults.problem() : m_problem;
}

// If this synchronisation fails, the next write stores the copy as well.
void StoredAssignments::keepAside(std::string_view key, Archive damaged)
{
    if (m_unusable == Unusable::LeftAlone)
        return;
    m_defaults.setData(std::string(key).append(Damaged), damaged);
    (void)m_defaults.synchronise();
}

} // namespace kestrel
