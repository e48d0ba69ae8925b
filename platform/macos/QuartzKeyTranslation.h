#pragma once

#include "platform/KeyTranslation.h"

namespace kestrel {

// Translates the native numbers of QKeyEvent on macOS: virtual key code and modifier flags.
class QuartzKeyTranslation final : public KeyTranslation {
public:
    [[nodiscard]] std::optional<TranslatedKey> translate(const NativeKeyEvent& event) override;

    [[nodiscard]] ModifierNames modifierNames() const override
    {
        return ModifierNames::OptionCommand;
    }
};

} // namespace kestrel
