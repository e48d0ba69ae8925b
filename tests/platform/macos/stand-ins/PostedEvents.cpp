#include "tests/platform/macos/stand-ins/PostedEvents.h"

#include "tests/platform/macos/stand-ins/CFObject.h"
#include "tests/platform/macos/stand-ins/Calls.h"

#include <cstdlib>

namespace kestrel::test {

PostedEvents& postedEvents()
{
    static PostedEvents events;
    return events;
}

namespace {

class EventSource final : public CFObject {
public:
    explicit EventSource(CGEventSourceStateID state)
        : CFObject(CFObject::EventSource)
        , state(state)
    {
    }

    const CGEventSourceStateID state;
};

class KeyboardEvent final : public CFObject {
public:
    KeyboardEvent()
        : CFObject(Event)
    {
    }

    PostedEvent event {};
};

} // namespace
} // namespace kestrel::test

using kestrel::test::calls;
using kestrel::test::CFObject;
using kestrel::test::EventSource;
using kestrel::test::KeyboardEvent;
using kestrel::test::postedEvents;

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID state)
{
    if (calls().fail("CGEventSourceCreate"))
        return nullptr;
    return (new EventSource(state))->as<CGEventSourceRef>();
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode keyCode, bool down)
{
    if (calls().fail("CGEventCreateKeyboardEvent"))
        return nullptr;
    auto* const created = new KeyboardEvent;
    created->event = {
        .tap = {},
        .keyCode = keyCode,
        .down = down,
        .flags = postedEvents().held,
        .autoRepeat = false,
        .source = {},
    };
    if (source)
        created->event.source = CFObject::of<EventSource>(source).state;
    return created->as<CGEventRef>();
}

CGEventType CGEventGetType(CGEventRef event)
{
    return CFObject::of<KeyboardEvent>(event).event.down ? kCGEventKeyDown : kCGEventKeyUp;
}

CGEventFlags CGEventGetFlags(CGEventRef event)
{
    return CFObject::of<KeyboardEvent>(event).event.flags;
}

void CGEventSetFlags(CGEventRef event, CGEventFlags flags)
{
    CFObject::of<KeyboardEvent>(event).event.flags = flags;
}

std::int64_t CGEventGetIntegerValueField(CGEventRef reference, CGEventField field)
{
    const auto& event = CFObject::of<KeyboardEvent>(reference).event;
    switch (field) {
    case kCGKeyboardEventAutorepeat:
        return event.autoRepeat;
    case kCGKeyboardEventKeycode:
        return event.keyCode;
    case kCGEventSourceStateID:
        return event.source.value_or(kCGEventSourceStatePrivate);
    default:
        std::abort(); // Kestrel uses no other field
    }
}

void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, std::int64_t value)
{
    if (field != kCGKeyboardEventAutorepeat)
        std::abort();
    CFObject::of<KeyboardEvent>(event).event.autoRepeat = value != 0;
}

void CGEventPost(CGEventTapLocation tap, CGEventRef event)
{
    auto posted = CFObject::of<KeyboardEvent>(event).event;
    posted.tap = tap;
    postedEvents().events.push_back(posted);
}
