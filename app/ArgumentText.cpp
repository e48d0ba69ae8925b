#include "app/ArgumentText.h"

#include <QStringDecoder>
#include <QSysInfo>

namespace kestrel {

namespace {
constexpr QByteArrayView FileScheme = "file://";

// The path in a URL like file:///home/me/a%20b.ZKCF. The URL of another machine's file stays.
QByteArray withoutScheme(const QByteArray& argument)
{
    if (argument.first(std::min(argument.size(), FileScheme.size())).toLower() != FileScheme)
        return argument;
    const qsizetype path = argument.indexOf('/', FileScheme.size());
    if (path < 0)
        return argument;
    const QByteArray host = argument.sliced(FileScheme.size(), path - FileScheme.size()).toLower();
    if (!host.isEmpty() && host != "localhost"
        && host != QSysInfo::machineHostName().toUtf8().toLower())
        return argument;
    return QByteArray::fromPercentEncoding(argument.sliced(path));
}
} // namespace

QString textOfArgument(const QByteArray& argument, const Utf8PathFinder& utf8PathTo)
{
    const QByteArray bytes = withoutScheme(argument);
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decode(bytes);
    if (!decode.hasError())
        return text;
    const auto other = utf8PathTo(bytes.constData());
    return other ? QString::fromStdString(*other) : text;
}

} // namespace kestrel
