#include "app/SingleInstance.h"

#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>

namespace kestrel {

namespace {
constexpr quint32 MaxMessageSize = 1 << 20;
constexpr char Taken = '+';

QString ownFolder(const QString& directory)
{
    QDir().mkpath(directory);
    QFile::setPermissions(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return directory;
}

QByteArray encode(const QStringList& paths)
{
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << paths;
    return message;
}
} // namespace

SingleInstance::SingleInstance(const QString& directory)
    : m_socketPath(ownFolder(directory) + QStringLiteral("/kestrel.socket"))
    , m_lock(directory + QStringLiteral("/kestrel.lock"))
{
    m_lock.setStaleLockTime(0); // a lock is stale when its owner is dead, never by its age
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim()
{
    if (!m_lock.tryLock(0))
        return false;
    QLocalServer::removeServer(m_socketPath); // the socket that a crash has left behind
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::greet);
    if (!m_server->listen(m_socketPath))
        qWarning("A second start will not reach this program: %s",
            qUtf8Printable(m_server->errorString()));
    return true;
}

void SingleInstance::greet()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { receive(*socket); });
        receive(*socket);
    }
}

void SingleInstance::receive(QLocalSocket& socket)
{
    if (socket.bytesAvailable() > MaxMessageSize) {
        socket.abort();
        return;
    }
    QDataStream stream(&socket);
    stream.startTransaction();
    QStringList paths;
    stream >> paths;
    if (!stream.commitTransaction())
        return; // the rest of the message has not arrived yet
    socket.write(&Taken, 1);
    socket.flush();
    emit startedAgain(paths);
}

// The first program may have no socket yet or no longer, so this tries until the time is up.
bool SingleInstance::handOver(const QStringList& paths, std::chrono::milliseconds timeout)
{
    const QDeadlineTimer deadline(timeout);
    const auto timeLeft = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
    while (!deadline.hasExpired()) {
        QLocalSocket socket;
        socket.connectToServer(m_socketPath);
        if (!socket.waitForConnected(timeLeft())) {
            QThread::msleep(20);
            continue;
        }
        socket.write(encode(paths));
        char answer = 0;
        if (socket.waitForReadyRead(timeLeft()) && socket.read(&answer, 1) == 1 && answer == Taken)
            return true;
    }
    return false;
}

} // namespace kestrel
