#pragma once

#include "platform/KeyCodes.h"

namespace kestrel {

// Posts keyboard events into the user's session. Main thread only; never waits. Posting takes in no
// news of the session, so that all events of one stroke rest on one look at the front application.
class KeyEvents {
public:
    enum class Direction { Down, Up };
    enum class AutoRepeat { No, Yes };
    enum class Result { Posted, NotPermitted, UnknownKey, Unavailable };

    virtual ~KeyEvents() = default;

    // Session tap. `flags` replace whatever modifiers the event would carry.
    [[nodiscard]] virtual Result post(
        KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat)
        = 0;

    // HID tap, from a source with the combined-session state; the event's flags are left alone.
    [[nodiscard]] virtual Result postBare(KeyCode keyCode, Direction direction) = 0;

    // Lets every key go that is still down because of what was posted here; nothing where the
    // system holds no posted key down.
    virtual void releaseAll() = 0;
};

} // namespace kestrel
