#pragma once

#include "common/ApplicationVisibility.h"

namespace kestrel {

class Workspace;

// Hides and activates this application, also in sessions that know no hidden applications.
class QtApplicationVisibility final : public ApplicationVisibility {
public:
    explicit QtApplicationVisibility(Workspace& workspace); // which outlives it

    void hide() override;
    void activate() override; // ignoring other applications

private:
    Workspace& m_workspace;
};

} // namespace kestrel
