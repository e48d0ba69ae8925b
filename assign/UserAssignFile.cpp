#include "assign/UserAssignFile.h"

#include "archive/ArchiveObject.h"
#include "archive/KeyedArchive.h"

namespace kestrel {

namespace {

const QString ClassName = QStringLiteral("UserAssignFile");
const QString TypeTag = QStringLiteral("PT_UserAssign");

const QString MyType = QStringLiteral("myType");
const QString MyVersion = QStringLiteral("myVersion");
const QString OrgShortcutArray = QStringLiteral("orgShortcutArray");
const QString OrgShortcutTitleArray = QStringLiteral("orgShortcutTitleArray");

} // namespace

UserAssignFile::UserAssignFile()
    : m_myType(TypeTag)
{
}

UserAssignFile::UserAssignFile(const ArchiveObject& coder)
    : m_myType(coder.value(MyType))
    , m_myVersion(coder.value(MyVersion).toInt64())
    , m_orgShortcutArray(coder.value(OrgShortcutArray))
    , m_orgShortcutTitleArray(coder.value(OrgShortcutTitleArray))
{
}

void UserAssignFile::encodeWithCoder(ArchiveObject& coder) const
{
    coder.encodeObject(MyType, m_myType);
    coder.encodeInteger(MyVersion, m_myVersion);
    coder.encodeObject(OrgShortcutArray, m_orgShortcutArray);
    coder.encodeObject(OrgShortcutTitleArray, m_orgShortcutTitleArray);
}

void UserAssignFile::initShortcutArray()
{
    auto table = std::make_shared<ArchiveDictionary>();
    for (int number = 1; number <= ButtonCount; ++number)
        table->set(number, emptyButtonEntry());
    m_orgShortcutArray = std::move(table);
    initShortcutTitleArray();
}

void UserAssignFile::initShortcutTitleArray()
{
    auto table = std::make_shared<ArchiveDictionary>();
    for (int number = 1; number <= ButtonCount; ++number)
        table->set(number, QString());
    m_orgShortcutTitleArray = std::move(table);
}

void UserAssignFile::setData(std::span<const std::uint8_t> archive)
{
    m_orgShortcutArray = KeyedArchive::unarchivedRoot(archive);
}

void UserAssignFile::setTitleData(std::span<const std::uint8_t> archive)
{
    m_orgShortcutTitleArray = KeyedArchive::unarchivedRoot(archive);
}

UserAssignFile::Bytes UserAssignFile::getData() const
{
    return KeyedArchive::archivedData(m_orgShortcutArray);
}

UserAssignFile::Bytes UserAssignFile::getTitleData() const
{
    return KeyedArchive::archivedData(m_orgShortcutTitleArray);
}

ButtonEntry UserAssignFile::getSwitchShortcut(int number) const
{
    return getShortcut(number);
}

ButtonEntry UserAssignFile::getShortcut(const ArchiveValue& key) const
{
    const auto table = getShortcutArray();
    return table ? table->value(key).array() : nullptr;
}

std::optional<QString> UserAssignFile::getShortcutTitle(const ArchiveValue& key) const
{
    const auto table = getShortcutTitleArray();
    if (!table || !table->value(key).isString())
        return std::nullopt;
    return table->value(key).text();
}

void UserAssignFile::setShortcutTitle(const QString& title, const ArchiveValue& forKey)
{
    if (const auto table = getShortcutTitleArray())
        table->set(forKey, title);
}

std::shared_ptr<ArchiveDictionary> UserAssignFile::getShortcutArray() const
{
    return m_orgShortcutArray.dictionary();
}

std::shared_ptr<ArchiveDictionary> UserAssignFile::getShortcutTitleArray() const
{
    return m_orgShortcutTitleArray.dictionary();
}

std::vector<ArchiveValue> UserAssignFile::allKeys() const
{
    const auto table = getShortcutArray();
    return table ? table->keys() : std::vector<ArchiveValue>();
}

std::size_t UserAssignFile::count() const
{
    const auto table = getShortcutArray();
    return table ? table->size() : 0;
}

bool UserAssignFile::isUserAssignFile() const
{
    return m_myType.isNull() || (m_myType.isString() && m_myType.text() == TypeTag);
}

UserAssignFile::Bytes UserAssignFile::fileImage() const
{
    auto coder = std::make_shared<ArchiveObject>(QStringList { ClassName, "NSObject" });
    encodeWithCoder(*coder);
    return KeyedArchive::archivedData(std::move(coder));
}

std::shared_ptr<UserAssignFile> UserAssignFile::fromFileImage(std::span<const std::uint8_t> image)
{
    const auto coder = KeyedArchive::unarchivedRoot(image).object();
    if (!coder || coder->className() != ClassName)
        return nullptr;
    return std::make_shared<UserAssignFile>(*coder);
}

} // namespace kestrel
