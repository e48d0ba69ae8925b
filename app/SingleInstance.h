#pragma once

#include <QLockFile>
#include <QObject>
#include <QStringList>

#include <chrono>

class QLocalServer;
class QLocalSocket;

namespace kestrel {

// Allows one running program for each user. The first start claims the place; a later start hands
// its files to the first and ends. Their socket is in a folder that only the user can enter.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    // Creates `directory` if it is missing.
    explicit SingleInstance(const QString& directory);
    ~SingleInstance() override;

    // True when this program is the first. From then on startedAgain() tells of later starts.
    [[nodiscard]] bool claim();

    // Sends the paths to the first program. False when it does not take them in time.
    [[nodiscard]] bool handOver(const QStringList& paths, std::chrono::milliseconds timeout);

signals:
    // The user has started the program again, with these files (absolute paths) or with none.
    void startedAgain(const QStringList& paths);

private:
    void greet();
    void receive(QLocalSocket& socket);

    QString m_socketPath;
    QLockFile m_lock;
    QLocalServer* m_server = nullptr;
};

} // namespace kestrel
