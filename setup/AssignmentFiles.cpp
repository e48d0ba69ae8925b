#include "setup/AssignmentFiles.h"

#include "archive/ArchiveLimits.h"
#include "archive/Bytes.h"
#include "platform/DocumentFiles.h"

#include <QFile>
#include <QFileInfo>

namespace kestrel {

namespace {

constexpr FileCodes Codes { .type = 0x55534153, .creator = 0x4B5A4C51 }; // 'USAS', 'KZLQ'

// No value if the path names no regular file or the file is larger than any archive may be.
std::optional<QByteArray> content(const QString& path)
{
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > static_cast<qint64>(ArchiveLimits::FileBytes)
        || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.read(static_cast<qint64>(ArchiveLimits::FileBytes));
}

} // namespace

std::shared_ptr<UserAssignFile> AssignmentFiles::read(const QString& path) const
{
    const auto bytes = content(path);
    if (!bytes)
        return nullptr;
    try {
        auto set = UserAssignFile::fromFileImage(viewOf(*bytes));
        return set && set->isUserAssignFile() ? set : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

bool AssignmentFiles::write(const QString& path, const UserAssignFile& set)
{
    std::string problem;
    try {
        problem = m_documents.replace(path.toStdString(), set.fileImage());
    } catch (const std::exception& error) {
        problem = error.what();
    }
    if (!problem.empty()) {
        qWarning("Cannot save %s: %s", qUtf8Printable(path), problem.c_str());
        return false;
    }
    (void)m_documents.setCodes(path.toStdString(), Codes);
    return true;
}

} // namespace kestrel
