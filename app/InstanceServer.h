#pragma once

#include "control/InstanceMessage.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <system_error>

class QSocketNotifier;

namespace kestrel {

// What the program answers: one message, and after it what the feed gives.
struct InstanceReply {
    InstanceMessage message;
    // The body of the next message, of the kind Events; empty when there is nothing at present.
    // Without a feed the connection ends after the message.
    std::function<QByteArray()> feed = {};

    [[nodiscard]] static InstanceReply unknown();
};

// Listens on the socket of the running program and answers what arrives there. Hostile or broken
// clients cost it little: their number, their messages and their time are limited, and when the
// process has no descriptors left, the clients wait until it has. (QLocalServer stops listening.)
class InstanceServer final : public QObject {
public:
    // Carries out a request on the main thread and returns the answer.
    using Handler = std::function<InstanceReply(const InstanceMessage& request)>;

    static constexpr int MaxConnections = 32; // beyond it the oldest one without a feed is dropped
    static constexpr std::chrono::milliseconds ConnectionTimeout { 5000 };
    static constexpr int MaxFollowers = 8; // connections with a feed
    // A follower that does not read costs this much memory and one batch of its feed.
    static constexpr qint64 MaxUnread = 64 * 1024;
    static constexpr std::chrono::milliseconds FeedInterval { 100 };

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
    [[nodiscard]] bool hasPlaceForFollower() const;
    void feedFollowers();

    Handler m_handler;
    QByteArray m_path; // empty until the server listens
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_pause; // runs while the process lacks descriptors
    QTimer m_feeding; // runs while there are followers
    QList<Connection*> m_connections; // children of this object, the oldest one first
};

} // namespace kestrel
