#include "app/SecondStart.h"

#include <utility>

namespace kestrel {

namespace {
constexpr std::chrono::milliseconds RetryInterval { 50 };
} // namespace

SecondStart::SecondStart(SingleInstance& instance, QStringList files)
    : m_instance(instance)
    , m_files(std::move(files))
{
    m_retry.setSingleShot(true);
    m_retry.setInterval(RetryInterval);
    connect(&m_retry, &QTimer::timeout, this, [this] { attempt(); });
    m_patience.setSingleShot(true);
    m_patience.setInterval(Patience);
    m_patience.setTimerType(Qt::PreciseTimer);
    connect(&m_patience, &QTimer::timeout, this, &SecondStart::runsOutOfPatience);

    connect(&m_socket, &QLocalSocket::connected, this, [this] { send(); });
    connect(&m_socket, &QLocalSocket::readyRead, this, [this] { receive(); });
    // The running program is ending, or it has no socket yet.
    connect(&m_socket, &QLocalSocket::errorOccurred, this, [this] { m_retry.start(); });
    connect(&m_socket, &QLocalSocket::disconnected, this, [this] { m_retry.start(); });
}

SecondStart::~SecondStart()
{
    m_socket.disconnect(this); // the end of the socket would start the timer after its end
}

void SecondStart::begin()
{
    m_patience.start();
    // Queued, so that files that are already on their way are added first.
    QMetaObject::invokeMethod(
        this, [this] { attempt(); }, Qt::QueuedConnection);
}

SecondStart::Outcome SecondStart::wait()
{
    if (!m_isFinished)
        m_loop.exec();
    return m_outcome;
}

void SecondStart::attempt()
{
    if (m_isFinished)
        return;
    switch (m_instance.claim()) {
    case SingleInstance::Claim::First:
        finish(Outcome::Claimed);
        return;
    case SingleInstance::Claim::Failed:
        m_problem = m_instance.problem();
        finish(Outcome::Failed);
        return;
    case SingleInstance::Claim::Taken:
        m_socket.abort();
        m_answer = {};
        m_socket.connectToServer(m_instance.socketPath());
        if (m_socket.state() != QLocalSocket::UnconnectedState)
            m_retry.stop();
    }
}

void SecondStart::send()
{
    m_sent = m_files.size();
    m_socket.write(InstanceMessage::open(m_files).encoded());
}

void SecondStart::receive()
{
    if (m_answer.add(m_socket.readAll()) != InstanceMessageReader::State::Complete)
        return;
    switch (m_answer.message().kind) {
    case InstanceMessage::Kind::Done:
        m_files.remove(0, m_sent);
        // Queued, so that files that are already on their way are added first. If there are any,
        // the end of the connection begins the next attempt.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_files.isEmpty())
                    finish(Outcome::HandedOver);
            },
            Qt::QueuedConnection);
        return;
    case InstanceMessage::Kind::Refused:
        m_problem = QString::fromUtf8(m_answer.message().body);
        finish(Outcome::Refused);
        return;
    default:
        return; // no answer to this request
    }
}

void SecondStart::finish(Outcome outcome)
{
    if (std::exchange(m_isFinished, true))
        return;
    m_outcome = outcome;
    m_retry.stop();
    m_patience.stop();
    m_loop.quit();
}

} // namespace kestrel
