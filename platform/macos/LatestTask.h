#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace kestrel {

// A task that is performed later, unless it has been replaced or dropped by then.
class LatestTask {
public:
    // `later` calls the function that it gets once, after this call.
    using Later = std::function<void(std::function<void()>)>;

    void set(std::function<void()> task, const Later& later)
    {
        m_task = std::make_shared<const std::function<void()>>(std::move(task));
        later([latest = std::weak_ptr(m_task)] {
            if (const auto present = latest.lock())
                (*present)();
        });
    }
    void drop() { m_task.reset(); }

private:
    std::shared_ptr<const std::function<void()>> m_task;
};

} // namespace kestrel
