#pragma once

#include "activity/ActivityEvent.h"

#include <string>

// Says in words what became of what the console has sent.
namespace kestrel::OutcomeWords {

// Such as "typed ⌘S" or "nothing: Finder is in front, not Pro Tools", in UTF-8. Empty for events of
// the link, which say all by themselves, and for a packet that only selects a zone.
[[nodiscard]] std::string describe(const ActivityEvent& event);

// True when the press or the release of a console key posted nothing, for a reason that the user
// may want to know.
[[nodiscard]] bool isKeptBack(const ActivityEvent& event);

} // namespace kestrel::OutcomeWords
