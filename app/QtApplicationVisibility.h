#pragma once

#include "common/ApplicationVisibility.h"

class QWidget;

namespace kestrel {

class Workspace;

// Hides and activates this application, also in sessions that know no hidden applications.
class QtApplicationVisibility final : public ApplicationVisibility {
public:
    explicit QtApplicationVisibility(Workspace& workspace); // which outlives it

    void hide() override;
    void activate() override; // ignoring other applications

    // Whether a window that goes with the application is on the screen. The toolkit calls minimised
    // windows visible, and those of a hidden application.
    [[nodiscard]] bool shows(const QWidget& window) const;

private:
    Workspace& m_workspace;
};

} // namespace kestrel
