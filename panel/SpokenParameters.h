#pragma once

#include "panel/DisplayMessage.h"

#include <QString>

#include <array>
#include <optional>

namespace kestrel {

// Puts changes of parameters into sentences. The values that were told last are kept, so that each
// sentence tells only what is new.
class SpokenParameters {
public:
    // All parameters that have changed since the last call, as one sentence: "Threshold −24.0 dB".
    // Empty if none has. At first all of them count as changed.
    [[nodiscard]] QString changed(const PanelZones& zones);

    // True when there was no parameter at the last call.
    [[nodiscard]] bool isBlank() const;

private:
    std::array<std::optional<QString>, PanelLayout::Knobs> m_told;
};

} // namespace kestrel
