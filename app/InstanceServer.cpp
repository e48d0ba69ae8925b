#include "app/InstanceServer.h"

#include "control/InstanceMessageReader.h"

#include <QFile>
#include <QLocalSocket>
#include <QPointer>
#include <QSocketNotifier>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kestrel {

namespace {
// In one turn of the main loop, so that a flood of connections does not hold up keys and painting.
constexpr int AcceptedInOneTurn = 8;
constexpr std::chrono::milliseconds PauseWithoutDescriptors { 200 };

std::error_code lastError()
{
    return { errno, std::generic_category() };
}

void prepare(int descriptor)
{
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}
} // namespace

// Reads one request, has it carried out and sends the answer.
class InstanceServer::Connection final : public QObject {
public:
    Connection(InstanceServer& server, int descriptor)
        : QObject(&server)
        , m_server(server)
    {
        m_socket.setReadBufferSize(InstanceMessage::HeaderSize + InstanceMessage::MaxBodySize);
        connect(&m_socket, &QLocalSocket::disconnected, this, [this] { m_server.remove(*this); });
        connect(&m_socket, &QLocalSocket::readyRead, this, [this] { read(); });
        m_deadline.setSingleShot(true);
        connect(&m_deadline, &QTimer::timeout, this, [this] { m_server.remove(*this); });
        m_deadline.start(ConnectionTimeout);
        if (!m_socket.setSocketDescriptor(descriptor))
            ::close(descriptor);
    }

    ~Connection() override
    {
        m_socket.disconnect(this); // the end of the socket would call the server after its end
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] bool isFollower() const { return static_cast<bool>(m_feed); }
    void feed()
    {
        while (m_socket.bytesToWrite() < MaxUnread) {
            const QByteArray body = m_feed();
            if (body.isEmpty())
                return;
            m_socket.write(InstanceMessage { InstanceMessage::Kind::Events, body }.encoded());
        }
    }

private:
    void read()
    {
        const QByteArray bytes = m_socket.readAll();
        if (m_requested)
            return;
        switch (m_reader.add(bytes)) {
        case InstanceMessageReader::State::Incomplete:
            return;
        case InstanceMessageReader::State::Malformed:
            m_requested = true;
            answer(InstanceMessage::refused(m_reader.problem()));
            return;
        case InstanceMessageReader::State::Complete:
            m_requested = true;
            // Not from within the socket: the handler may turn the main loop, and this connection
            // may end in there.
            QMetaObject::invokeMethod(
                this, [this] { carryOut(); }, Qt::QueuedConnection);
        }
    }

    void carryOut()
    {
        const InstanceMessage request
            = m_reader.message(); // a copy: this connection may end in here
        const QPointer<Connection> guard(this);
        const InstanceReply reply = m_server.m_handler(request);
        if (!guard)
            return;
        if (!reply.feed)
            answer(reply.message);
        else if (m_server.hasPlaceForFollower())
            follow(reply);
        else
            answer(InstanceMessage::refused("Too many programs follow the activity."));
    }

    void follow(const InstanceReply& reply)
    {
        m_deadline.stop();
        m_feed = reply.feed;
        m_socket.write(reply.message.encoded());
        connect(&m_socket, &QLocalSocket::bytesWritten, this, [this] { feed(); });
        m_server.m_feeding.start();
        feed();
    }

    // The answer leaves in a later turn of the loop. If this turn is the last one, the sender gets
    // no answer and takes the place of this program.
    void answer(const InstanceMessage& message)
    {
        m_socket.write(message.encoded());
        m_socket.disconnectFromServer();
    }

    InstanceServer& m_server;
    QLocalSocket m_socket;
    QTimer m_deadline;
    InstanceMessageReader m_reader;
    bool m_requested = false;
    std::function<QByteArray()> m_feed;
};

InstanceReply InstanceReply::unknown()
{
    return { InstanceMessage::refused("The running Kestrel does not know this request.") };
}

InstanceServer::InstanceServer(Handler handler)
    : m_handler(std::move(handler))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(PauseWithoutDescriptors);
    connect(&m_pause, &QTimer::timeout, this, [this] { m_notifier->setEnabled(true); });
    m_feeding.setInterval(FeedInterval);
    connect(&m_feeding, &QTimer::timeout, this, [this] { feedFollowers(); });
}

InstanceServer::~InstanceServer()
{
    m_notifier.reset();
    if (!m_path.isEmpty())
        ::unlink(m_path.constData());
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    qDeleteAll(m_connections);
}

std::error_code InstanceServer::listen(const QString& path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    if (name.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return std::make_error_code(std::errc::filename_too_long);
    std::copy(name.begin(), name.end(), address.sun_path);

    if (::unlink(name.constData()) != 0 && errno != ENOENT)
        return lastError();
    m_descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (m_descriptor < 0)
        return lastError();
    prepare(m_descriptor);
    if (::bind(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return lastError();
    m_path = name;
    if (::chmod(name.constData(), S_IRUSR | S_IWUSR) != 0 || ::listen(m_descriptor, SOMAXCONN) != 0)
        return lastError();
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { acceptSome(); });
    return {};
}

void InstanceServer::acceptSome()
{
    for (int i = 0; i < AcceptedInOneTurn; ++i) {
        const int descriptor = ::accept(m_descriptor, nullptr, nullptr);
        if (descriptor >= 0) {
            add(descriptor);
            continue;
        }
        if (errno == EINTR || errno == ECONNABORTED)
            continue;
        if (errno != EAGAIN && errno != EWOULDBLOCK)
            pause(); // no descriptors or no memory
        return;
    }
}

// The notifier would fire without a pause for a connection that cannot be accepted.
void InstanceServer::pause()
{
    m_notifier->setEnabled(false);
    m_pause.start();
}

void InstanceServer::add(int descriptor)
{
    prepare(descriptor);
    if (m_connections.size() >= MaxConnections)
        remove(**std::find_if_not(m_connections.begin(), m_connections.end(),
            [](const Connection* connection) { return connection->isFollower(); }));
    m_connections.append(new Connection(*this, descriptor));
}

void InstanceServer::remove(Connection& connection)
{
    if (m_connections.removeOne(&connection))
        connection.deleteLater();
}

bool InstanceServer::hasPlaceForFollower() const
{
    return std::count_if(m_connections.begin(), m_connections.end(),
               [](const Connection* connection) { return connection->isFollower(); })
        < MaxFollowers;
}

void InstanceServer::feedFollowers()
{
    bool isFollowed = false;
    for (Connection* const connection : QList(m_connections)) {
        if (!connection->isFollower())
            continue;
        connection->feed();
        isFollowed = true;
    }
    if (!isFollowed)
        m_feeding.stop();
}

} // namespace kestrel
