#pragma once

#include "common/ApplicationVisibility.h"

class QWidget;

namespace kestrel {

class Workspace;

// Hides and activates this application. On systems without hidden applications it hides the
// windows.
class QtApplicationVisibility final : public ApplicationVisibility {
public:
    explicit QtApplicationVisibility(Workspace& workspace); // the workspace outlives this object

    void hide() override;
    void activate() override; // ignoring other applications

    // True if the window is on the screen. QWidget::isVisible() is also true for minimised windows
    // and for the windows of a hidden application.
    [[nodiscard]] bool shows(const QWidget& window) const;

private:
    Workspace& m_workspace;
};

} // namespace kestrel
