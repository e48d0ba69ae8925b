#pragma once

#include "platform/KeyTranslation.h"

namespace kestrel {

// Key events of X11 as the toolkit passes them on: X keycode, keysym and state. Alt stands for
// Option, Super for Command.
class X11KeyTranslation final : public KeyTranslation {
public:
    [[nodiscard]] std::optional<TranslatedKey> translate(const NativeKeyEvent& event) override;
};

} // namespace kestrel
