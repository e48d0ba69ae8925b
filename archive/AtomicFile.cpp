#include "archive/AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kestrel {

namespace {

constexpr qint64 LeftoverAgeSeconds = 3600;
constexpr qsizetype SuffixLength = 6;

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
bool AtomicFile::write(const QString& path, ByteView content)
{
    removeLeftovers(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const auto size = static_cast<qint64>(content.size());
    const bool isWritten = file.write(reinterpret_cast<const char*>(content.data()), size) == size
        && file.flush() && file.size() == size && isOnDisk(file.handle());
    if (!isWritten)
        file.cancelWriting();
    if (!file.commit())
        return false;
    syncFolder(path);
    return true;
}

void AtomicFile::removeLeftovers(const QString& path)
{
    // QSaveFile follows a link, so a killed save leaves its temporary file beside the link's
    // target.
    const QFileInfo given(path);
    const QFileInfo target(given.isSymLink() ? given.canonicalFilePath() : path);
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
