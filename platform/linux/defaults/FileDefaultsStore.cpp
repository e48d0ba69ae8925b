#include "platform/linux/defaults/FileDefaultsStore.h"

#include "archive/ArchiveError.h"
#include "archive/ArchiveLimits.h"
#include "archive/AtomicFile.h"
#include "archive/FileLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdio>

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
    m_wasUnreadable = read() == Health::Unreadable;
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
    return dataOf(m_content.root(), key);
}

void FileDefaultsStore::setData(std::string_view key, std::span<const std::uint8_t> value)
{
    m_changes.insert_or_assign(std::string(key), Bytes(value.begin(), value.end()));
}

FileDefaultsStore::Health FileDefaultsStore::read()
{
    QFile file(m_path);
    if (!file.exists()) {
        m_content = emptyDictionary();
        return Health::Sound;
    }
    // Opening a FIFO would wait for a writer.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return Health::Unreadable;
    const QByteArray bytes = file.read(ArchiveLimits::FileBytes + 1);
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

bool FileDefaultsStore::keepAside() const
{
    const QByteArray damaged = QFile::encodeName(m_path);
    return std::rename(damaged.constData(), (damaged + ".damaged").constData()) == 0;
}

bool FileDefaultsStore::synchronise()
{
    if (!QDir().mkpath(QFileInfo(m_path).absolutePath()))
        return false;
    const FileLock lock(m_path + QStringLiteral(".lock"), m_lockTimeout);
    if (!lock.isHeld())
        return false;
    switch (read()) {
    case Health::Unreadable:
        return false;
    case Health::Damaged:
        return m_changes.empty() || (keepAside() && apply());
    case Health::Sound:
        break;
    }
    if (m_changes.empty())
        return true;
    // The old content was never read, so the new values do not replace it silently.
    if (m_wasUnreadable && QFileInfo::exists(m_path) && !keepAside())
        return false;
    return apply();
}

bool FileDefaultsStore::apply()
{
    for (const auto& [key, value] : m_changes) {
        keepAsideForeign(m_content.root(), key);
        plist_dict_set_item(m_content.root(), key.c_str(),
            plist_new_data(reinterpret_cast<const char*>(value.data()), value.size()));
    }
    const Bytes content = m_content.toBinary();
    if (content.size() > ArchiveLimits::FileBytes || !AtomicFile::write(m_path, content))
        return false;
    m_wasUnreadable = false;
    m_changes.clear();
    return true;
}

std::unique_ptr<DefaultsStore> makeFileDefaultsStore()
{
    return std::make_unique<FileDefaultsStore>(FileDefaultsStore::standardPath());
}

} // namespace kestrel
