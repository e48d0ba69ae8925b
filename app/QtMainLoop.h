#pragma once

#include "platform/MainLoop.h"

#include <QObject>

#include <mutex>
#include <vector>

namespace kestrel {

// The main loop over Qt's. Made and destroyed on the main thread, within the application object's
// life; outlives its watches.
class QtMainLoop final : public QObject, public MainLoop {
public:
    void perform(std::function<void()> task) override;
    [[nodiscard]] std::unique_ptr<Watch> watch(
        int descriptor, std::function<void()> ready) override;

protected:
    void customEvent(QEvent* event) override;

private:
    class DescriptorWatch;
    using Tasks = std::vector<std::function<void()>>;

    void runReady(const std::function<void()>& ready);
    // Runs what was performed before this call; what that performs comes later.
    void runTasks();

    std::mutex m_mutex;
    Tasks m_tasks; // guarded by m_mutex
    bool m_wakeUpOwed = false; // guarded by m_mutex: runTasks() is going to be called
    Tasks m_spare; // memory for the next round
};

} // namespace kestrel
