#pragma once

#include "platform/MainLoop.h"

#include <QObject>

#include <deque>
#include <mutex>

namespace kestrel {

// The MainLoop on Qt's event loop. It is created and destroyed on the main thread while the
// application object exists, and outlives its watches.
class QtMainLoop final : public QObject, public MainLoop {
public:
    void perform(std::function<void()> task) override;
    [[nodiscard]] std::unique_ptr<Watch> watch(
        int descriptor, std::function<void()> ready) override;

protected:
    void customEvent(QEvent* event) override;

private:
    using Tasks = std::deque<std::function<void()>>;

    void runReady(const std::function<void()>& ready);
    // Runs the tasks that were performed before this call, in order. Tasks that these perform run
    // later. A task may turn the loop: the call in there goes on with the tasks after it.
    void runTasks();

    std::mutex m_mutex;
    Tasks m_tasks; // guarded by m_mutex
    bool m_wakeUpOwed = false; // guarded by m_mutex; true if a call of runTasks() is on its way
    Tasks m_running; // taken by runTasks() and not run yet
};

} // namespace kestrel
