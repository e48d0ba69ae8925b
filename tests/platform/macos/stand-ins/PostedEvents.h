#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <optional>
#include <vector>

namespace kestrel::test {

// A keyboard event at the moment when it was posted.
struct PostedEvent {
    CGEventTapLocation tap;
    CGKeyCode keyCode;
    bool down;
    CGEventFlags flags;
    bool autoRepeat;
    std::optional<CGEventSourceStateID> source; // no value: posted without a source

    friend bool operator==(const PostedEvent&, const PostedEvent&) = default;
};

struct PostedEvents {
    std::vector<PostedEvent> events;
    CGEventFlags held = 0; // the modifiers that the user holds; every new event begins with them
};

PostedEvents& postedEvents();

} // namespace kestrel::test
