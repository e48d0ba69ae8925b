#pragma once

#include "platform/KeyCodes.h"

namespace kestrel {

// Posts keyboard events into the user's session. Main thread only; never waits. Posting does not
// look again for changes of the session, so all events of one stroke depend on one look at the
// front application.
class KeyEvents {
public:
    enum class Direction { Down, Up };
    enum class AutoRepeat { No, Yes };
    enum class Result { Posted, NotPermitted, UnknownKey, Unavailable };

    virtual ~KeyEvents() = default;

    // Posts at the session tap. `flags` replace the modifiers that the event would carry otherwise.
    [[nodiscard]] virtual Result post(
        KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat)
        = 0;

    // Posts at the HID tap, from an event source with the combined session state. The event's flags
    // are left as they are.
    [[nodiscard]] virtual Result postBare(KeyCode keyCode, Direction direction) = 0;

    // Releases every key that is still down because of an event posted here. Does nothing on a
    // system that holds no posted key down.
    virtual void releaseAll() = 0;
};

} // namespace kestrel
