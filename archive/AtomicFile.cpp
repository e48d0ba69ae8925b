#include "archive/AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kestrel {

namespace {

constexpr qint64 LeftoverAgeSeconds = 3600;
constexpr qsizetype SuffixLength = 6;
constexpr int MaxLinks = 40; // as in the Linux kernel

// Some errors show only when the data goes to the disk. A file system without fsync() is no error.
bool isOnDisk(int descriptor)
{
    return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// Makes the file's new name survive a power cut. The content is sound with or without it.
void syncFolder(const QString& path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    (void)fsync(descriptor);
    close(descriptor);
}

// Follows the links at the end of a path. QSaveFile would not follow one to a file that does not
// exist. Empty if the links lead in a circle.
QString targetOf(const QString& path)
{
    QFileInfo file(path);
    for (int links = 0; file.isSymLink(); ++links) {
        if (links == MaxLinks)
            return {};
        file.setFile(file.symLinkTarget());
    }
    return file.absoluteFilePath();
}

bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isRandomSuffix(QStringView suffix)
{
    const auto isCapital = [](QChar c) { return c.isUpper(); };
    const auto isSmall = [](QChar c) { return c.isLower(); };
    return suffix.size() == SuffixLength && std::all_of(suffix.begin(), suffix.end(), isLetter)
        && std::any_of(suffix.begin() + 1, suffix.end(), isCapital)
        && std::any_of(suffix.begin(), suffix.end(), isSmall);
}

} // namespace

// QSaveFile buffers small content and reports success for it even on a full disk, so each of its
// answers is checked together with the size that was really written.
AtomicFile::Result AtomicFile::write(const QString& path, ByteView content)
{
    const QString target = targetOf(path);
    if (target.isEmpty())
        return { QString::fromLocal8Bit(std::strerror(ELOOP)) };
    removeLeftovers(target);
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return { file.errorString() };
    const auto size = static_cast<qint64>(content.size());
    const bool isWritten = file.write(reinterpret_cast<const char*>(content.data()), size) == size
        && file.flush() && file.size() == size && isOnDisk(file.handle());
    if (!isWritten) {
        QString problem = file.errorString();
        if (problem == QIODevice::tr("Unknown error")) // after a write that was cut short
            problem = QStringLiteral("No space is left");
        file.cancelWriting();
        file.commit();
        return { problem };
    }
    if (!file.commit())
        return { file.errorString() };
    syncFolder(target);
    return {};
}

void AtomicFile::removeLeftovers(const QString& path)
{
    const QFileInfo target(targetOf(path)); // killed saves left their temporary files beside it
    const QString prefix = target.fileName() + u'.';
    const QDateTime newest = QDateTime::currentDateTime().addSecs(-LeftoverAgeSeconds);
    const auto files
        = QDir(target.absolutePath()).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& file : files) {
        const QString name = file.fileName();
        if (name.startsWith(prefix) && isRandomSuffix(QStringView(name).sliced(prefix.size()))
            && file.ownerId() == geteuid() && file.lastModified() < newest)
            QFile::remove(file.filePath());
    }
}

} // namespace kestrel
