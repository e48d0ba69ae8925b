#pragma once

#include "app/InstanceMessage.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <system_error>

class QSocketNotifier;

namespace kestrel {

// Listens on the socket of the running program and answers what arrives there. Hostile or broken
// clients cost it little: their number, their messages and their time are limited, and when the
// process has no descriptors left, the clients wait until it has. (QLocalServer stops listening.)
class InstanceServer final : public QObject {
public:
    // Carries out a request on the main thread and returns the answer.
    using Handler = std::function<InstanceMessage(const InstanceMessage& request)>;

    static constexpr int MaxConnections = 32; // beyond it the oldest one is dropped
    static constexpr std::chrono::milliseconds ConnectionTimeout { 5000 };

    explicit InstanceServer(Handler handler);
    ~InstanceServer() override; // removes the socket; unanswered clients see their connection end
    InstanceServer(const InstanceServer&) = delete;
    InstanceServer& operator=(const InstanceServer&) = delete;

    // Replaces what is left at `path`, unless it is a folder. The caller makes sure that no other
    // program listens there. Returns what went wrong.
    [[nodiscard]] std::error_code listen(const QString& path);

private:
    class Connection;

    void acceptSome();
    void pause();
    void add(int descriptor);
    void remove(Connection& connection);

    Handler m_handler;
    QByteArray m_path; // empty until the server listens
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_pause; // runs while the process lacks descriptors
    QList<Connection*> m_connections; // children of this object, the oldest one first
};

} // namespace kestrel
