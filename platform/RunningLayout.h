#pragma once

#include "platform/KeyCodes.h"

#include <memory>
#include <optional>
#include <string>

namespace kestrel {

// The keyboard layout that is in use. Main thread only.
class RunningLayout {
public:
    // In UTF-8. Empty where a key types no character that can be shown.
    struct Characters {
        std::string plain;
        std::string withShift;
    };

    virtual ~RunningLayout() = default;

    // No value for a key that the layout does not have.
    [[nodiscard]] virtual std::optional<Characters> charactersOf(KeyCode key) = 0;
};

// Null where no layout can be asked, for instance without a display. Each platform folder defines
// it once.
[[nodiscard]] std::unique_ptr<RunningLayout> runningLayout();

} // namespace kestrel
