#pragma once

#include "activity/ActivityEvent.h"

#include <string>

// Says in words what became of what the console has sent.
namespace kestrel::OutcomeWords {

// Such as "typed ⌘S" or "nothing: Finder is in front, not Pro Tools", in UTF-8. Empty for events of
// the link, which say all by themselves.
[[nodiscard]] std::string describe(const ActivityEvent& event);

// True when a key of the console was to type something and did not.
[[nodiscard]] bool isKeptBack(const ActivityEvent& event);

} // namespace kestrel::OutcomeWords
