#pragma once

namespace kestrel {

// Whether the system lets this program post keyboard events. Main thread only.
class Permissions {
public:
    virtual ~Permissions() = default;

    [[nodiscard]] virtual bool mayPostKeyEvents() = 0;

    // Shows the system's own question; does nothing where there is none to ask.
    virtual void requestKeyEvents() = 0;

    // Opens the settings in which the user can give the permission; nothing where there are none.
    virtual void showKeyEventSettings() = 0;
};

} // namespace kestrel
