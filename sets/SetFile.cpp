#include "sets/SetFile.h"

#include "archive/ArchiveLimits.h"
#include "archive/KeyedArchive.h"
#include "assign/UserAssignFile.h"
#include "sets/SetRoot.h"

#include <QFile>
#include <QFileInfo>

namespace kestrel::SetFile {

namespace {
// Every set has a shorter text, indented as deep as it may be.
constexpr qint64 TextBytes = 64 << 20;

[[noreturn]] void failNoSet(const QString& name, const QString& problem)
{
    throw Error(Error::Kind::NoSet, name + QStringLiteral(": ") + problem);
}

QByteArray content(const QString& path)
{
    QFile file(path);
    const bool isFolder = QFileInfo(path).isDir();
    if (isFolder || !file.open(QIODevice::ReadOnly))
        throw Error(Error::Kind::Unreadable,
            path + QStringLiteral(": ")
                + (isFolder ? QStringLiteral("Is a directory") : file.errorString()));
    QByteArray bytes = file.read(TextBytes + 1);
    if (bytes.size() > TextBytes)
        failNoSet(path, QStringLiteral("larger than any set"));
    return bytes;
}

bool isText(const QByteArray& bytes)
{
    const QByteArray start = bytes.left(4096).trimmed();
    return start.startsWith('{') || start.startsWith("\xEF\xBB\xBF{");
}
} // namespace

SetText::Root read(const QString& path)
{
    const QByteArray bytes = content(path);
    return isText(bytes) ? fromText(bytes, path) : fromArchive(viewOf(bytes), path);
}

SetText::Root readText(const QString& path)
{
    return fromText(content(path), path);
}

SetText::Root fromText(const QByteArray& text, const QString& name)
{
    try {
        return SetText::fromText(text);
    } catch (const TextError& error) {
        failNoSet(QStringLiteral("%1:%2:%3")
                      .arg(name)
                      .arg(error.position().line)
                      .arg(error.position().column),
            QString::fromUtf8(error.what()));
    }
}

SetText::Root fromArchive(ByteView archive, const QString& name)
{
    try {
        auto root = KeyedArchive::unarchivedRoot(archive).object();
        if (root && root->className() == SetRoot::ClassName
            && UserAssignFile(*root).isUserAssignFile())
            return root;
    } catch (const ArchiveError& error) {
        failNoSet(name, QString::fromUtf8(error.what()));
    }
    failNoSet(name, QStringLiteral("an archive of something else than a set"));
}

Bytes archive(const SetText::Root& set, const QString& name)
{
    try {
        Bytes bytes = KeyedArchive::archivedData(set);
        const auto again = KeyedArchive::unarchivedRoot(bytes).object();
        if (again && SetText::text(again) == SetText::text(set))
            return bytes;
    } catch (const ArchiveError& error) {
        failNoSet(name, QString::fromUtf8(error.what()));
    }
    failNoSet(name, QStringLiteral("has something that no archive can hold"));
}

} // namespace kestrel::SetFile
