#include "setup/AssignmentFiles.h"

#include "archive/ArchiveLimits.h"
#include "archive/AtomicFile.h"
#include "platform/FileAttributes.h"

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
    QString problem;
    try {
        problem = AtomicFile::write(path, set.fileImage()).problem;
    } catch (const std::exception& error) {
        problem = QString::fromUtf8(error.what());
    }
    if (!problem.isEmpty()) {
        qWarning("Cannot save %s: %s", qUtf8Printable(path), qUtf8Printable(problem));
        return false;
    }
    (void)m_attributes.setCodes(path.toStdString(), Codes);
    return true;
}

} // namespace kestrel
