#include "platform/macos/QuartzKeyEvents.h"

namespace kestrel {

static_assert(CGEventFlags { Modifier::CapsLock } == kCGEventFlagMaskAlphaShift);
static_assert(CGEventFlags { Modifier::Shift } == kCGEventFlagMaskShift);
static_assert(CGEventFlags { Modifier::Control } == kCGEventFlagMaskControl);
static_assert(CGEventFlags { Modifier::Option } == kCGEventFlagMaskAlternate);
static_assert(CGEventFlags { Modifier::Command } == kCGEventFlagMaskCommand);

QuartzKeyEvents::QuartzKeyEvents(std::shared_ptr<PostEventAccess> access)
    : m_access(std::move(access))
{
}

KeyEvents::Result QuartzKeyEvents::post(
    KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat)
{
    if (!m_access->assumed())
        return Result::NotPermitted;
    return post(event(keyCode, direction, flags, autoRepeat), kCGSessionEventTap);
}

KeyEvents::Result QuartzKeyEvents::postBare(KeyCode keyCode, Direction direction)
{
    if (!m_access->assumed())
        return Result::NotPermitted;
    return post(bareEvent(keyCode, direction), kCGHIDEventTap);
}

CFHolder<CGEventRef> QuartzKeyEvents::event(
    KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat)
{
    CFHolder event(CGEventCreateKeyboardEvent(nullptr, keyCode, direction == Direction::Down));
    if (!event)
        return event;
    CGEventSetFlags(event.get(), CGEventFlags { flags });
    if (direction == Direction::Down && autoRepeat == AutoRepeat::Yes)
        CGEventSetIntegerValueField(event.get(), kCGKeyboardEventAutorepeat, 1);
    return event;
}

CFHolder<CGEventRef> QuartzKeyEvents::bareEvent(KeyCode keyCode, Direction direction)
{
    const CFHolder source(CGEventSourceCreate(kCGEventSourceStateCombinedSessionState));
    return CFHolder(
        CGEventCreateKeyboardEvent(source.get(), keyCode, direction == Direction::Down));
}

KeyEvents::Result QuartzKeyEvents::post(const CFHolder<CGEventRef>& event, CGEventTapLocation tap)
{
    if (!event)
        return Result::Unavailable;
    CGEventPost(tap, event.get());
    return Result::Posted;
}

} // namespace kestrel
