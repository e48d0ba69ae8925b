#pragma once

#include "platform/KeyTranslation.h"

namespace kestrel {

// Key events of macOS as the toolkit passes them on: virtual key code and modifier flags.
class QuartzKeyTranslation final : public KeyTranslation {
public:
    [[nodiscard]] std::optional<TranslatedKey> translate(const NativeKeyEvent& event) override;
};

} // namespace kestrel
