#pragma once

namespace kestrel {

// The system's permission to post keyboard events. Main thread only.
class Permissions {
public:
    virtual ~Permissions() = default;

    [[nodiscard]] virtual bool mayPostKeyEvents() = 0;

    // Shows the system's own question. Does nothing if the system has none.
    virtual void requestKeyEvents() = 0;

    // Opens the settings in which the user can give the permission. Does nothing if there are none.
    virtual void showKeyEventSettings() = 0;
};

} // namespace kestrel
