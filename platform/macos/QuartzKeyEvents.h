#pragma once

#include "platform/KeyEvents.h"
#include "platform/macos/CFHolder.h"
#include "platform/macos/PostEventAccess.h"

#include <CoreGraphics/CoreGraphics.h>

namespace kestrel {

// Posts keyboard events through Quartz event services, with any virtual key code.
class QuartzKeyEvents final : public KeyEvents {
public:
    explicit QuartzKeyEvents(std::shared_ptr<PostEventAccess> access);

    Result post(
        KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat) override;
    Result postBare(KeyCode keyCode, Direction direction) override;
    void releaseAll() override { } // a posted key-down is an event and holds no key

    // The events to post; an empty holder when the system cannot create one.
    [[nodiscard]] static CFHolder<CGEventRef> event(
        KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat);
    [[nodiscard]] static CFHolder<CGEventRef> bareEvent(KeyCode keyCode, Direction direction);

private:
    Result post(const CFHolder<CGEventRef>& event, CGEventTapLocation tap);

    std::shared_ptr<PostEventAccess> m_access;
};

} // namespace kestrel
