#pragma once

#include <QLockFile>
#include <QObject>
#include <QStringList>

#include <chrono>

class QLocalServer;
class QLocalSocket;

namespace kestrel {

// One running program a user: the first start claims the place, a later one hands over what it was
// started with and ends. The socket between them lies in a folder that only the user can enter.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    // `directory` is made if it is missing.
    explicit SingleInstance(const QString& directory);
    ~SingleInstance() override;

    // True when this program is the first; it hears of later starts from now on.
    [[nodiscard]] bool claim();

    // Gives the paths to the first program; false when it does not take them in time.
    [[nodiscard]] bool handOver(const QStringList& paths, std::chrono::milliseconds timeout);

signals:
    // A later start, with the absolute paths of the files that it was given; none for a bare start.
    void startedAgain(const QStringList& paths);

private:
    void greet();
    void receive(QLocalSocket& socket);

    QString m_socketPath;
    QLockFile m_lock;
    QLocalServer* m_server = nullptr;
};

} // namespace kestrel
