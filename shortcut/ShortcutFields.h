#pragma once

#include <memory>
#include <vector>

namespace kestrel {

class ShortcutFieldController;

// The four fields of a window from top to bottom. An element may be null.
using ShortcutFields = std::vector<std::unique_ptr<ShortcutFieldController>>;

} // namespace kestrel
