#pragma once

#include "platform/KeyTranslation.h"

namespace kestrel {

// Translates X11 key events as Qt passes them on: X keycode, keysym and state. Alt stands for
// Option, Super for Command.
class X11KeyTranslation final : public KeyTranslation {
public:
    [[nodiscard]] std::optional<TranslatedKey> translate(const NativeKeyEvent& event) override;
};

} // namespace kestrel
