#include "app/QtMainLoop.h"

#include "app/DescriptorWatch.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kestrel {

void QtMainLoop::perform(std::function<void()> task)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_tasks.push_back(std::move(task));
        if (std::exchange(m_wakeUpOwed, true))
            return;
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

std::unique_ptr<MainLoop::Watch> QtMainLoop::watch(int descriptor, std::function<void()> ready)
{
    const auto run = [this, ready = std::move(ready)] { runReady(ready); };
    auto throughGlib = watchThroughGlib(descriptor, run);
    return throughGlib ? std::move(throughGlib) : watchThroughQt(descriptor, run);
}

void QtMainLoop::customEvent(QEvent*)
{
    runTasks();
}

// `ready` may turn the loop, so what it performs has an event of its own as well.
void QtMainLoop::runReady(const std::function<void()>& ready)
{
    ready();
    runTasks();
}

void QtMainLoop::runTasks()
{
    {
        const std::scoped_lock lock(m_mutex);
        std::move(m_tasks.begin(), m_tasks.end(), std::back_inserter(m_running));
        m_tasks.clear();
        m_wakeUpOwed = false;
    }
    while (!m_running.empty()) {
        const auto task = std::move(m_running.front());
        m_running.pop_front();
        task();
    }
}

} // namespace kestrel
