#include "archive/AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace kestrel {

namespace {

constexpr qsizetype SuffixLength = 6;
constexpr int MaxLinks = 40; // as in the Linux kernel
// Other programs that replace a file whole name their temporary files alike and take no lock. They
// write for far less than this.
constexpr std::chrono::minutes OldestInUse { 1 };

// Some errors show only when the data goes to the disk. A file system without fsync() is no error.
bool isOnDisk(int descriptor)
{
    return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
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

// The folder of a file that is written. Processes that write in it share a lock on it, which the
// system takes from a process that is killed.
class Folder {
public:
    explicit Folder(const QString& file)
        : m_descriptor(open(QFile::encodeName(QFileInfo(file).absolutePath()).constData(),
            O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
    }
    ~Folder()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    // True when nobody else writes in the folder now, or begins to before this object's end.
    [[nodiscard]] bool takeAlone() const { return lock(LOCK_EX); }
    // Waits while somebody else has it alone, which is short. Without a lock the file is written
    // all the same, as on file systems that have no locks.
    void share() const
    {
        for (int i = 0; i < 100 && !lock(LOCK_SH) && errno == EWOULDBLOCK; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    // Makes new names in the folder survive a power cut. The content is sound with or without it.
    void sync() const { (void)fsync(m_descriptor); }

private:
    [[nodiscard]] bool lock(int kind) const { return flock(m_descriptor, kind | LOCK_NB) == 0; }

    int m_descriptor;
};

bool isAbandoned(const QFileInfo& file)
{
    const qint64 age = file.lastModified().msecsTo(QDateTime::currentDateTime());
    return file.ownerId() == geteuid() && std::chrono::milliseconds(age) > OldestInUse;
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
    const Folder folder(target);
    folder.share();
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
    folder.sync();
    return {};
}

void AtomicFile::removeLeftovers(const QString& path)
{
    const QString written = targetOf(path); // killed saves left their temporary files beside it
    if (written.isEmpty())
        return;
    const Folder folder(written);
    if (!folder.takeAlone())
        return;
    const QFileInfo target(written);
    const QString prefix = target.fileName() + u'.';
    const auto files
        = QDir(target.absolutePath()).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& file : files) {
        const QString name = file.fileName();
        if (name.startsWith(prefix) && isRandomSuffix(QStringView(name).sliced(prefix.size()))
            && isAbandoned(file))
            QFile::remove(file.filePath());
    }
}

bool AtomicFile::removeIfStill(const QString& path, ByteView content)
{
    const QString target = targetOf(path);
    if (target.isEmpty())
        return false;
    const Folder folder(target);
    if (!folder.takeAlone())
        return false; // somebody writes, and may write this file
    QFile file(target);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray present = file.read(static_cast<qint64>(content.size()) + 1);
    const ByteView bytes = viewOf(present);
    return std::equal(bytes.begin(), bytes.end(), content.begin(), content.end())
        && QFile::remove(target);
}

} // namespace kestrel
