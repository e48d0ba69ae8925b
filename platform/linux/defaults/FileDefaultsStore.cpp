#include "platform/linux/defaults/FileDefaultsStore.h"

#include "archive/ArchiveError.h"
#include "archive/ArchiveLimits.h"
#include "archive/AtomicFile.h"
#include "archive/FileLock.h"
#include "platform/StoredDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace kestrel {

namespace {

// The file has a handful of values of ours. libplist takes seconds to write a list of ten times as
// many objects.
constexpr std::size_t MaxObjects = 50'000;

PropertyList emptyDictionary()
{
    return PropertyList(plist_new_dict());
}

std::optional<DefaultsStore::Bytes> dataOf(plist_t dictionary, std::string_view key)
{
    plist_t node = plist_dict_get_item(dictionary, std::string(key).c_str());
    if (!node || plist_get_node_type(node) != PLIST_DATA)
        return std::nullopt;
    const ByteView data = PropertyListNode::data(node);
    return DefaultsStore::Bytes(data.begin(), data.end());
}

// Another program has written a value that is not data. It must not be lost unseen.
void keepAsideForeign(plist_t dictionary, const std::string& key)
{
    plist_t node = plist_dict_get_item(dictionary, key.c_str());
    if (node && plist_get_node_type(node) != PLIST_DATA)
        plist_dict_set_item(dictionary, (key + ".damaged").c_str(), plist_copy(node));
}

} // namespace

FileDefaultsStore::FileDefaultsStore(QString path, std::chrono::milliseconds lockTimeout)
    : m_path(std::move(path))
    , m_lockTimeout(lockTimeout)
    , m_content(emptyDictionary())
{
    const Health health = read();
    m_wasDamaged = health == Health::Damaged;
    m_wasUnreadable = health == Health::Unreadable;
    if (m_wasUnreadable)
        m_problem = m_unreadable;
}

QString FileDefaultsStore::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/com.holvik.kestrel.plist");
}

std::optional<DefaultsStore::Bytes> FileDefaultsStore::data(std::string_view key)
{
    if (const auto change = m_changes.find(key); change != m_changes.end())
        return change->second;
    return m_known[std::string(key)] = dataOf(m_content.root(), key);
}

void FileDefaultsStore::setData(std::string_view key, std::span<const std::uint8_t> value)
{
    m_changes.insert_or_assign(std::string(key), Bytes(value.begin(), value.end()));
}

FileDefaultsStore::Health FileDefaultsStore::read()
{
    QFile file(m_path);
    if (!QFileInfo::exists(m_path)) { // also a link to nothing, for which QFile::exists() is true
        m_content = emptyDictionary();
        return Health::Sound;
    }
    m_unreadable = "The file of the defaults cannot be read";
    if (!QFileInfo(file).isFile()) // opening a FIFO would wait for a writer
        return Health::Unreadable;
    if (!file.open(QIODevice::ReadOnly)) {
        m_unreadable += ": " + file.errorString().toStdString();
        return Health::Unreadable;
    }
    // QFile makes room for as much as is asked for.
    const auto most = static_cast<qint64>(ArchiveLimits::FileBytes) + 1;
    const QByteArray bytes = file.read(std::min(file.size() + 1, most));
    if (file.error() != QFileDevice::NoError)
        return Health::Unreadable;
    try {
        PropertyList content = PropertyList::fromBytes(viewOf(bytes), MaxObjects);
        if (plist_get_node_type(content.root()) == PLIST_DICT) {
            m_content = std::move(content);
            return Health::Sound;
        }
    } catch (const ArchiveError&) {
    }
    m_content = emptyDictionary();
    return Health::Damaged;
}

std::string FileDefaultsStore::keepAside() const
{
    const QByteArray damaged = QFile::encodeName(m_path);
    if (std::rename(damaged.constData(), (damaged + ".damaged").constData()) == 0)
        return {};
    return std::strerror(errno);
}

bool FileDefaultsStore::synchronise()
{
    m_problem = write();
    return m_problem.empty();
}

std::string FileDefaultsStore::write()
{
    if (!QDir().mkpath(QFileInfo(m_path).absolutePath()))
        return "The folder of the defaults cannot be made";
    const FileLock lock(m_path + QStringLiteral(".lock"), m_lockTimeout);
    if (!lock.isHeld()) {
        const std::string reason = lock.error() ? ": " + lock.error().message() : "";
        return "The file of the defaults cannot be locked" + reason;
    }
    const Health health = read();
    if (health == Health::Unreadable)
        return m_unreadable;
    if (m_changes.empty())
        return {};
    // If the old content was never read, the new values do not replace it silently.
    if (health == Health::Damaged || (m_wasUnreadable && QFileInfo::exists(m_path))) {
        if (std::string problem = keepAside(); !problem.empty())
            return problem;
    }
    return apply();
}

std::string FileDefaultsStore::apply()
{
    for (const auto& [key, value] : m_changes) {
        keepAsideForeign(m_content.root(), key);
        keepAsideUnknown(key, value);
        plist_dict_set_item(m_content.root(), key.c_str(),
            plist_new_data(reinterpret_cast<const char*>(value.data()), value.size()));
    }
    const Bytes content = m_content.toBinary();
    if (content.size() > ArchiveLimits::FileBytes)
        return "The defaults are too large";
    if (const auto written = AtomicFile::write(m_path, content); !written)
        return written.problem.toStdString();
    m_wasUnreadable = false;
    for (auto& [key, value] : m_changes)
        m_known[key] = std::move(value);
    m_changes.clear();
    return {};
}

void FileDefaultsStore::keepAsideUnknown(const std::string& key, const Bytes& value)
{
    const auto known = m_known.find(key);
    const auto stored = dataOf(m_content.root(), key);
    const bool isSeen = known != m_known.end() && stored == known->second;
    if (stored && !isSeen && stored != value) {
        qWarning("Another run has stored \"%s\"; its value is kept as \"%s.replaced\".",
            key.c_str(), key.c_str());
        plist_dict_set_item(m_content.root(), (key + ".replaced").c_str(),
            plist_new_data(reinterpret_cast<const char*>(stored->data()), stored->size()));
    }
}

StoredDefaults openStoredDefaults()
{
    const QString path = FileDefaultsStore::standardPath();
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return { std::make_unique<FileDefaultsStore>(path),
        folder.toStdString() + "/com.holvik.kestrel.recovery.ZKCF", path.toStdString() };
}

} // namespace kestrel
