#pragma once

#include "activity/ActivityEvent.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace kestrel {

// An event of the activity as an object of JSON on one line. It has what a program needs to make
// the event again, and what it says in words.
struct ActivityLine {
    std::uint64_t number = 0;
    ActivityEvent event;

    // Without a line feed.
    [[nodiscard]] QByteArray toJson() const;
    // No value when the text is no such object.
    [[nodiscard]] static std::optional<ActivityLine> fromJson(const QByteArray& text);
};

// The line that takes the place of events that the log lost before they were read.
[[nodiscard]] QByteArray droppedLine(std::uint64_t count);
// No value when it is no such line.
[[nodiscard]] std::optional<std::uint64_t> droppedIn(const QByteArray& text);

} // namespace kestrel
