#pragma once

#include "archive/FileLock.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace kestrel {

class InstanceServer;
struct InstanceMessage;
struct InstanceReply;

// Allows one running program for each user. The first start claims the place by a lock. A later one
// hands its files to the first through a socket (see SecondStart). Lock and socket are in a folder
// that only the user can enter.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    enum class Claim { First, Taken, Failed };

    // An empty `directory` makes each claim fail.
    explicit SingleInstance(const QString& directory);
    ~SingleInstance() override;

    // First: this program has the place until it ends, and startedAgain() tells of later starts.
    // Taken: another program has it. Failed: nobody can know, see problem().
    [[nodiscard]] Claim claim();
    [[nodiscard]] const QString& problem() const { return m_problem; } // without a full stop

    // Answers what other programs ask, apart from later starts. Without it they are refused.
    using Requests = std::function<InstanceReply(const InstanceMessage& request)>;
    void setRequests(Requests requests) { m_requests = std::move(requests); }

    // Answers no further start. Those wait for the end of this program and take its place.
    void close();

    [[nodiscard]] QString socketPath() const;

signals:
    // The user has started the program again, with these files (absolute paths) or with none. The
    // files are handled when the receivers return.
    void startedAgain(const QStringList& paths);

private:
    [[nodiscard]] InstanceReply answer(const InstanceMessage& request);

    QString m_directory;
    QString m_problem;
    std::optional<FileLock> m_lock;
    Requests m_requests;
    std::unique_ptr<InstanceServer> m_server;
};

} // namespace kestrel
