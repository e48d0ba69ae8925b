#include "app/PrivateFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace kestrel {

namespace {
QString failure(const QString& path)
{
    const auto reason = std::generic_category().message(errno);
    return QStringLiteral("%1: %2").arg(path, QString::fromStdString(reason));
}
} // namespace

std::optional<QString> makePrivateFolder(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    QDir().mkpath(QFileInfo(path).path());
    if (::mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST)
        return failure(path);
    // By descriptor, so that nobody exchanges the folder after it was looked at. A link to another
    // folder is refused.
    const int folder = ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0)
        return failure(path);
    struct stat status { };
    std::optional<QString> problem;
    const bool isKnown = ::fstat(folder, &status) == 0;
    if (isKnown && status.st_uid != ::geteuid())
        problem = QStringLiteral("%1 belongs to another user").arg(path);
    else if (!isKnown || ::fchmod(folder, S_IRWXU) != 0)
        problem = failure(path);
    ::close(folder);
    return problem;
}

} // namespace kestrel
