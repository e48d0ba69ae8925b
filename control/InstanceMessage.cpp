#include "control/InstanceMessage.h"

#include <QDir>
#include <QStringDecoder>
#include <QtEndian>

namespace kestrel {

InstanceMessage InstanceMessage::open(const QStringList& paths)
{
    InstanceMessage message { Kind::Open, {} };
    for (const QString& path : paths) {
        const QByteArray bytes = path.toUtf8();
        if (message.body.size() + bytes.size() + 1 > MaxBodySize)
            break;
        message.body.append(bytes).append('\0');
    }
    return message;
}

InstanceMessage InstanceMessage::refused(const char* reason)
{
    return { Kind::Refused, reason };
}

std::optional<QStringList> InstanceMessage::paths() const
{
    if (!body.isEmpty() && !body.endsWith('\0'))
        return {};
    QStringList paths;
    for (qsizetype start = 0; start < body.size();) {
        const qsizetype end = body.indexOf('\0', start);
        QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString path = decode(QByteArrayView(body).sliced(start, end - start));
        if (decode.hasError() || !QDir::isAbsolutePath(path))
            return {};
        paths.append(path);
        start = end + 1;
    }
    return paths;
}

QByteArray InstanceMessage::encoded() const
{
    QByteArray bytes("KSTL");
    bytes.append(static_cast<char>(Version)).append(static_cast<char>(kind));
    char length[4];
    qToBigEndian(static_cast<quint32>(body.size()), length);
    return bytes.append(length, sizeof length).append(body);
}

} // namespace kestrel
