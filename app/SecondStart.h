#pragma once

#include "app/SingleInstance.h"
#include "control/InstanceMessageReader.h"

#include <QEventLoop>
#include <QLocalSocket>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <chrono>

namespace kestrel {

// A start that finds the place taken. It hands its files to the running program, or takes the place
// when that program ends. It tries for as long as the running program does neither, so that no file
// is lost.
class SecondStart final : public QObject {
    Q_OBJECT

public:
    enum class Outcome {
        HandedOver,
        Claimed, // the place is this program's now; files() are left to open
        Refused, // by the running program, see problem()
        Failed, // the place can be neither claimed nor reached, see problem()
        GivenUp,
    };

    static constexpr std::chrono::milliseconds Patience { 5000 };

    SecondStart(SingleInstance& instance, QStringList files);
    ~SecondStart() override;
    SecondStart(const SecondStart&) = delete;
    SecondStart& operator=(const SecondStart&) = delete;

    // Files that are to be opened too, until wait() has returned.
    void add(const QStringList& files) { m_files += files; }
    // Begins to hand over. Before, files may still be added to a start that would have none.
    void begin();
    // Runs an event loop until there is an outcome.
    [[nodiscard]] Outcome wait();
    void giveUp() { finish(Outcome::GivenUp); }

    [[nodiscard]] const QStringList& files() const { return m_files; }
    [[nodiscard]] const QString& problem() const { return m_problem; }

signals:
    void runsOutOfPatience(); // once; the start goes on trying

private:
    void attempt();
    void send();
    void receive();
    void finish(Outcome outcome);

    SingleInstance& m_instance;
    QStringList m_files; // that nobody has opened yet
    qsizetype m_sent = 0; // how many of them the request on its way contains
    QString m_problem;
    QLocalSocket m_socket;
    InstanceMessageReader m_answer;
    QTimer m_retry;
    QTimer m_patience;
    QEventLoop m_loop;
    Outcome m_outcome = Outcome::GivenUp;
    bool m_isFinished = false;
};

} // namespace kestrel
