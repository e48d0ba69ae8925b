#pragma once

#include "platform/Notices.h"

#include <functional>

namespace kestrel {

class StoredAssignments;

// Adds a notice for as long as the assignments cannot be stored or could not be read. Choosing it
// tries to store them again. Main thread only.
class StoringNotice final : public Notices {
public:
    // The references outlive this object.
    StoringNotice(
        const StoredAssignments& assignments, std::function<void()> tryAgain, Notices& others);

    // The own notice first.
    std::vector<Notice> current() override;

private:
    const StoredAssignments& m_assignments;
    std::function<void()> m_tryAgain;
    Notices& m_others;
};

} // namespace kestrel
