#include "app/SingleInstance.h"

#include "app/InstanceServer.h"
#include "app/PrivateFolder.h"
#include "control/InstancePlace.h"

#include <chrono>

namespace kestrel {

SingleInstance::SingleInstance(const QString& directory)
    : m_directory(directory)
{
}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::socketPath() const
{
    return instanceSocket(m_directory);
}

SingleInstance::Claim SingleInstance::claim()
{
    if (m_directory.isEmpty()) {
        m_problem = QStringLiteral("There is no folder for the files of the session");
        return Claim::Failed;
    }
    if (const auto problem = makePrivateFolder(m_directory)) {
        m_problem = *problem;
        return Claim::Failed;
    }
    const QString lockPath = m_directory + QStringLiteral("/kestrel.lock");
    m_lock.emplace(lockPath, std::chrono::milliseconds(0));
    if (m_lock->error()) {
        m_problem = QStringLiteral("%1: %2").arg(
            lockPath, QString::fromStdString(m_lock->error().message()));
        return Claim::Failed;
    }
    if (!m_lock->isHeld())
        return Claim::Taken;
    m_server = std::make_unique<InstanceServer>(
        [this](const InstanceMessage& request) { return answer(request); });
    if (const auto error = m_server->listen(socketPath()))
        qWarning("A second start will not reach this program: %s: %s", qUtf8Printable(socketPath()),
            error.message().c_str());
    return Claim::First;
}

void SingleInstance::close()
{
    m_server.reset();
}

InstanceReply SingleInstance::answer(const InstanceMessage& request)
{
    if (request.kind != InstanceMessage::Kind::Open)
        return m_requests ? m_requests(request) : InstanceReply::unknown();
    const auto paths = request.paths();
    if (!paths)
        return { InstanceMessage::refused("A path is not absolute or not in UTF-8.") };
    emit startedAgain(*paths);
    return { { InstanceMessage::Kind::Done, {} } };
}

} // namespace kestrel
